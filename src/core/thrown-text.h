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

// Returns a description of the current exception. REQUIRES: the caller is in a catch block.
Thrown what_was_thrown();

// Returns the text of the current exception. Returns `unknown` if the exception has none of the
// kinds of `Thrown`, and `wordless` if its text is empty. REQUIRES: the caller is in a catch
// block.
Glib::ustring thrown_text(const char* unknown, const char* wordless);
