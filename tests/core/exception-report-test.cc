#include "core/exception-report.h"
#include "support/dialogs.h"

#include <glibmm/fileutils.h>
#include <glibmm/ustring.h>
#include <gtest/gtest.h>
#include <gtkmm/button.h>
#include <gtkmm/dialog.h>

#include <stdexcept>

namespace {

// Returns the text that the user sees when the handler of a button's click throws.
Glib::ustring text_after(const std::function<void()>& handler)
{
  Gtk::Button button;
  button.signal_clicked().connect(handler);
  return answer_next_dialog(Gtk::RESPONSE_OK, [&] { button.clicked(); }).text;
}

} // namespace

TEST(ExceptionReport, ReportsWhatAHandlerThrowsAndTheProgramContinues)
{
  const struct {
    const char* kind;
    std::function<void()> handler;
    const char* expected;
  } cases[] = {
      {"std", [] { throw std::runtime_error("out of <luck>"); }, "out of <luck>"},
      {"glib", [] { throw Glib::FileError(Glib::FileError::FAILED, "no file"); }, "no file"},
      {"ustring", [] { throw Glib::ustring("a ustring"); }, "a ustring"},
      {"string", [] { throw std::string("a string"); }, "a string"},
      {"text", [] { throw "a text"; }, "a text"},
      {"other", [] { throw 7; }, "unknown error"},
  };
  for (const auto& c : cases)
    EXPECT_NE(std::string::npos, text_after(c.handler).raw().find(c.expected)) << c.kind;
}
