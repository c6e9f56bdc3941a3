#include "core/exception-report.h"

#include "core/markup.h"
#include "core/report.h"

#include <glibmm/exception.h>
#include <glibmm/exceptionhandler.h>

#include <exception>

namespace {

void report(const Glib::ustring& what)
{
  error("Something unexpected went wrong: %s\nWhat you have entered is still there; please save "
        "your survey.",
        escape_markup(what).c_str());
}

void report_current_exception()
{
  try {
    throw;
  } catch (const Glib::Exception& e) {
    report(e.what());
  } catch (const std::exception& e) {
    report(e.what());
  } catch (const Glib::ustring& text) {
    report(text);
  } catch (const std::string& text) {
    report(text);
  } catch (const char* text) {
    report(text);
  } catch (...) {
    report("unknown error");
  }
}

} // namespace

void install_exception_report()
{
  Glib::add_exception_handler(sigc::ptr_fun(&report_current_exception));
}
