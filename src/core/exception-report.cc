#include "core/exception-report.h"

#include "core/markup.h"
#include "core/report.h"
#include "core/thrown-text.h"

#include <glibmm/exceptionhandler.h>

namespace {

void report_current_exception()
{
  error("Something unexpected went wrong: %s\nWhat you have entered is still there; please save "
        "your survey.",
        escape_markup(thrown_text("unknown error", "")).c_str());
}

} // namespace

void install_exception_report()
{
  Glib::add_exception_handler(sigc::ptr_fun(&report_current_exception));
}
