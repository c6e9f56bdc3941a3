#include "core/report.h"

#include "core/markup.h"
#include "core/report-presenter.h"

#include <glibmm/stringutils.h>
#include <glibmm/ustring.h>

#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <vector>

int debug_level = 0;

namespace {

std::string error_context; // precedes every message
int error_count = 0;
ReportPresenter present = nullptr;

std::string format_message(const char* fmt, va_list args)
{
  char short_buffer[1024];
  va_list copy;
  va_copy(copy, args);
  int needed = vsnprintf(short_buffer, sizeof short_buffer, fmt, copy);
  va_end(copy);
  if (needed < 0)
    return fmt; // the C library could not format it: a raw format is better than no message
  if (static_cast<std::size_t>(needed) < sizeof short_buffer)
    return short_buffer;

  std::vector<char> buffer;
  do {
    buffer.resize(static_cast<std::size_t>(needed) + 1);
    va_copy(copy, args);
    needed = vsnprintf(buffer.data(), buffer.size(), fmt, copy);
    va_end(copy);
  } while (needed >= 0 && static_cast<std::size_t>(needed) >= buffer.size());
  return buffer.data();
}

const char* message_prefix(RetCode code)
{
  switch (code) {
  case RET_INTERNAL_ERROR:
    return "Uh oh, Internal Error: ";
  case RET_ASSERTION:
    return "Uh oh, ";
  default:
    return "";
  }
}

// Returns UTF-8 in every locale, because a dialog accepts nothing else.
std::string errno_text(int number)
{
  return ": " + Glib::strerror(number).raw() + " (" + std::to_string(number) + ")";
}

void print_error(const std::string& text, bool is_fatal)
{
  ++error_count;
  fprintf(stderr, "*** %s: %s\n", is_fatal ? "FATAL ERROR" : "ERROR",
          unescape_markup(text).c_str());
}

void present_error(const std::string& text, bool is_fatal, const Glib::ustring* title)
{
  if (present)
    present({title && !title->empty() ? *title : "Error occurred", text, is_fatal});
}

RetCode display_error(RetCode code, const std::string& message, bool is_fatal,
                      const int* error_number, const Glib::ustring* title)
{
  const std::string text = error_context + message_prefix(code) + message +
                           (error_number ? errno_text(*error_number) : std::string());
  print_error(text, is_fatal);
  present_error(text, is_fatal, title);
  return code;
}

[[noreturn]] void display_fatal(RetCode code, const std::string& message, const int* error_number)
{
  exit(translate_code(display_error(code, message, true, error_number, nullptr)));
}

} // namespace

// Defines `message`, formatted from the arguments after `last`.
#define FORMAT_ARGUMENTS(message, last)                                                            \
  va_list args;                                                                                    \
  va_start(args, last);                                                                            \
  const std::string message = format_message(last, args);                                          \
  va_end(args)

RetCode error(const char* fmt, ...)
{
  FORMAT_ARGUMENTS(message, fmt);
  return display_error(RET_FAILURE, message, false, nullptr, nullptr);
}

RetCode error(RetCode code, const char* fmt, ...)
{
  FORMAT_ARGUMENTS(message, fmt);
  return display_error(code, message, false, nullptr, nullptr);
}

RetCode titled_error(const Glib::ustring& title, const char* fmt, ...)
{
  FORMAT_ARGUMENTS(message, fmt);
  return display_error(RET_FAILURE, message, false, nullptr, &title);
}

RetCode long_error(const std::string& message, const std::string& shown)
{
  print_error(error_context + message, false);
  present_error(error_context + shown, false, nullptr);
  return RET_FAILURE;
}

void fatal(const char* fmt, ...)
{
  FORMAT_ARGUMENTS(message, fmt);
  display_fatal(RET_FAILURE, message, nullptr);
}

void fatal(RetCode code, const char* fmt, ...)
{
  FORMAT_ARGUMENTS(message, fmt);
  display_fatal(code, message, nullptr);
}

RetCode ErrnoReport::error(const char* fmt, ...) const
{
  FORMAT_ARGUMENTS(message, fmt);
  return display_error(RET_FAILURE, message, false, &number, nullptr);
}

RetCode ErrnoReport::error(RetCode code, const char* fmt, ...) const
{
  FORMAT_ARGUMENTS(message, fmt);
  return display_error(code, message, false, &number, nullptr);
}

RetCode ErrnoReport::titled_error(const Glib::ustring& title, const char* fmt, ...) const
{
  FORMAT_ARGUMENTS(message, fmt);
  return display_error(RET_FAILURE, message, false, &number, &title);
}

void ErrnoReport::fatal(const char* fmt, ...) const
{
  FORMAT_ARGUMENTS(message, fmt);
  display_fatal(RET_FAILURE, message, &number);
}

void ErrnoReport::fatal(RetCode code, const char* fmt, ...) const
{
  FORMAT_ARGUMENTS(message, fmt);
  display_fatal(code, message, &number);
}

void assert_failure(const char* expression, const char* file, int line)
{
  fatal(RET_ASSERTION, "Assertion failed at %s line %d: %s", file, line, expression);
}

void set_report_presenter(ReportPresenter presenter)
{
  present = presenter;
}

void set_error_context(const std::string& text)
{
  error_context = text;
}
