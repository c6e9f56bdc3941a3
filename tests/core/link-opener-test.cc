#include "core/link-opener.h"
#include "support/dialogs.h"
#include "support/main-loop.h"
#include "support/output.h"

#include <gtest/gtest.h>
#include <gtkmm/aboutdialog.h>
#include <gtkmm/clipboard.h>
#include <gtkmm/label.h>
#include <gtkmm/messagedialog.h>
#include <gtkmm/window.h>

namespace {

// An address with a scheme that no program opens.
const char* const unknown = "mavo-no-such-scheme:a?b=1&c=<2>";

// Emits the signal of a click on a link. Returns whether it was handled.
bool activate_link(Gtk::Widget& widget, const char* uri)
{
  const TraceLevel quiet(-1);
  gboolean handled = FALSE;
  g_signal_emit_by_name(widget.gobj(), "activate-link", uri, &handled);
  return handled;
}

class LinkOpener : public testing::Test
{
protected:
  LinkOpener() { install_link_opener(); }

  Gtk::Label label;
};

} // namespace

TEST_F(LinkOpener, ShowsTheAddressThatNoProgramOpens)
{
  const SeenDialog seen = answer_next_dialog(
      Gtk::RESPONSE_CLOSE, [this] { EXPECT_TRUE(activate_link(label, unknown)); });
  EXPECT_EQ("Link Not Opened", seen.title.raw());
  EXPECT_NE(std::string::npos, seen.text.raw().find(unknown)) << seen.text;
}

TEST_F(LinkOpener, CopiesTheAddress)
{
  Gtk::Clipboard::get()->set_text("before");
  answer_next_dialog(Gtk::RESPONSE_CLOSE, [this] { activate_link(label, unknown); });
  EXPECT_EQ("before", Gtk::Clipboard::get()->wait_for_text().raw());
  answer_next_dialog(1, [this] { activate_link(label, unknown); });
  EXPECT_EQ(unknown, Gtk::Clipboard::get()->wait_for_text().raw());
}

TEST_F(LinkOpener, ShowsAndCopiesAMailAddressWithoutItsScheme)
{
  const SeenDialog seen =
      answer_next_dialog(1, [this] { activate_link(label, "mailto:help@mavo.invalid"); });
  EXPECT_EQ(std::string::npos, seen.text.raw().find("mailto:")) << seen.text;
  EXPECT_EQ("help@mavo.invalid", Gtk::Clipboard::get()->wait_for_text().raw());
}

TEST_F(LinkOpener, HandlesTheLinksOfAbout)
{
  Gtk::AboutDialog about;
  const SeenDialog seen = answer_next_dialog(
      Gtk::RESPONSE_CLOSE, [&about] { EXPECT_TRUE(activate_link(about, unknown)); });
  EXPECT_NE(std::string::npos, seen.text.raw().find(unknown)) << seen.text;
}

TEST_F(LinkOpener, HandlesTheLinksOfVisibleWindows)
{
  Gtk::Window window;
  window.add(label);
  window.show_all();
  settle();
  const SeenDialog seen = answer_next_dialog(
      Gtk::RESPONSE_CLOSE, [this] { EXPECT_TRUE(activate_link(label, unknown)); });
  EXPECT_EQ("Link Not Opened", seen.title.raw());
  window.remove();
}

TEST_F(LinkOpener, HandlesTheLinksOfMessages)
{
  Gtk::MessageDialog message("A link: <a href=\"mavo-no-such-scheme:a\">here</a>", true);
  auto* const text = dynamic_cast<Gtk::Label*>(message.get_message_area()->get_children().front());
  ASSERT_NE(nullptr, text);
  const SeenDialog seen = answer_next_dialog(
      Gtk::RESPONSE_CLOSE, [text] { EXPECT_TRUE(activate_link(*text, unknown)); });
  EXPECT_EQ("Link Not Opened", seen.title.raw());
}
