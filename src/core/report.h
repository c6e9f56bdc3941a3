#pragma once

#include "core/ret-code.h"

#include <cerrno>
#include <string>

namespace Glib {
class ustring;
}

// Telling the user that something went wrong: one line on standard error and then
// what the presenter of report-presenter.h does; in the program, it shows a modal dialog
// that has to be dismissed before the call returns. The message is a printf format, and
// the text that results is Pango markup: put plain words through escape_markup() first.
// Text that is not valid markup is shown as it stands. Without a presenter there is only
// the line. It holds the characters that were escaped, and the tags as they are.
//
// What the names add: `_errno` appends the system's text for errno, `titled_`
// gives the dialog a title, and `fatal` ends the process once the dialog has
// been closed, with the exit status translate_code(code). Without a code,
// RET_FAILURE is meant. All others return the code.

#define MAVO_PRINTF(fmt_index, first) __attribute__((format(printf, fmt_index, first)))

RetCode error(const char* fmt, ...) MAVO_PRINTF(1, 2);
RetCode error(RetCode code, const char* fmt, ...) MAVO_PRINTF(2, 3);
RetCode titled_error(const Glib::ustring& title, const char* fmt, ...) MAVO_PRINTF(2, 3);
[[noreturn]] void fatal(const char* fmt, ...) MAVO_PRINTF(1, 2);
[[noreturn]] void fatal(RetCode code, const char* fmt, ...) MAVO_PRINTF(2, 3);

// The same as error() for a message part of which is too long to be shown: standard error
// gets `message`, the dialog `shown`. Both are markup.
RetCode long_error(const std::string& message, const std::string& shown);

// The reports about errno: error_errno, titled_error_errno and fatal_errno are used like
// the functions above. They read errno before their arguments are computed, which could
// change it: the expression before the parentheses of a call is evaluated first.
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

// Ends the process with the status of RET_ASSERTION, naming the expression.
[[noreturn]] void assert_failure(const char* expression, const char* file, int line);

// A text that stands in front of every later message; empty at start. A
// facility for long jobs; nothing uses it at present.
void set_error_context(const std::string& text);

// How much is traced on standard output: a line is printed when the level is
// at least the line's own. Set once by main from "-d<n>"; 0 without it, and a
// negative level silences even the complaints about reference data.
extern int debug_level;
