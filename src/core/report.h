#pragma once

#include "core/ret-code.h"

#include <cerrno>
#include <string>

namespace Glib {
class ustring;
}

// These functions report to the user that something went wrong. They print one line to
// standard error and then call the presenter of report-presenter.h. The program's presenter
// shows a modal dialog and returns when the user has closed it.
//
// `fmt` is a printf format. The formatted text is Pango markup: the caller escapes plain text
// with escape_markup(). The dialog shows text that is not valid markup literally. In the line
// on standard error, escapes are replaced by their characters, and tags are unchanged.
//
// `_errno` in a name: appends the system's text for errno. `titled_`: gives the dialog a
// title. `fatal`: ends the process with the exit status translate_code(code). All others
// return the code, which is RET_FAILURE if the caller gives none.

#define MAVO_PRINTF(fmt_index, first) __attribute__((format(printf, fmt_index, first)))

RetCode error(const char* fmt, ...) MAVO_PRINTF(1, 2);
RetCode error(RetCode code, const char* fmt, ...) MAVO_PRINTF(2, 3);
RetCode titled_error(const Glib::ustring& title, const char* fmt, ...) MAVO_PRINTF(2, 3);
[[noreturn]] void fatal(const char* fmt, ...) MAVO_PRINTF(1, 2);
[[noreturn]] void fatal(RetCode code, const char* fmt, ...) MAVO_PRINTF(2, 3);

// Like error(), for a message that is too long for a dialog: prints `message` to standard
// error and shows `shown` in the dialog. Both are markup.
RetCode long_error(const std::string& message, const std::string& shown);

// error_errno, titled_error_errno and fatal_errno are used like the functions above. They
// are macros because they must read errno before the evaluation of their arguments, which
// could change it: C++ evaluates the expression before the parentheses of a call first.
struct ErrnoReport {
  // `this` counts as the first argument.
  RetCode error(const char* fmt, ...) const MAVO_PRINTF(2, 3);
  RetCode error(RetCode code, const char* fmt, ...) const MAVO_PRINTF(3, 4);
  RetCode titled_error(const Glib::ustring& title, const char* fmt, ...) const MAVO_PRINTF(3, 4);
  [[noreturn]] void fatal(const char* fmt, ...) const MAVO_PRINTF(2, 3);
  [[noreturn]] void fatal(RetCode code, const char* fmt, ...) const MAVO_PRINTF(3, 4);

  int number; // the value of errno
};
#define error_errno ErrnoReport{errno}.error
#define titled_error_errno ErrnoReport{errno}.titled_error
#define fatal_errno ErrnoReport{errno}.fatal

// Reports the failed expression and ends the process with the exit status of RET_ASSERTION.
[[noreturn]] void assert_failure(const char* expression, const char* file, int line);

// Sets a text that precedes every later message. It is empty at start. It is meant for long
// jobs; nothing uses it at present.
void set_error_context(const std::string& text);

// The trace level. A trace line of level n is printed to standard output if debug_level is at
// least n. main() sets it once from "-d<n>"; the default is 0. A value below -1 also suppresses
// complaints about reference data.
extern int debug_level;
