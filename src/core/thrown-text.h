#pragma once

#include <glibmm/ustring.h>

// What a catch block holds. Libraries throw their exceptions; the code that
// reads and writes documents throws plain texts.
struct Thrown {
  // "gioerr", "gliberr", "glibexc", "stdexc", "ustr", "str" or "cstr"; null if
  // the thing thrown is neither an exception nor a text.
  const char* kind = nullptr;
  Glib::ustring text; // valid UTF-8; can be empty
};

// Names what was thrown. To be called inside a catch block only.
Thrown what_was_thrown();

// The text of it alone, which is `unknown` for something of no known kind and
// `wordless` where the text is empty.
Glib::ustring thrown_text(const char* unknown, const char* wordless);
