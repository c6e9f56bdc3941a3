#pragma once

#include <glibmm/ustring.h>

// Describes what a catch block caught. Libraries throw their exceptions; the code that reads
// and writes documents throws plain texts.
struct Thrown {
  // "gioerr", "gliberr", "glibexc", "stdexc", "ustr", "str" or "cstr"; null if it is neither
  // an exception nor a text.
  const char* kind = nullptr;
  Glib::ustring text; // valid UTF-8; may be empty
};

// Describes the current exception. REQUIRES: the caller is in a catch block.
Thrown what_was_thrown();

// Returns the text of the current exception: `unknown` if it is of no known kind, `wordless`
// if its text is empty. REQUIRES: the caller is in a catch block.
Glib::ustring thrown_text(const char* unknown, const char* wordless);
