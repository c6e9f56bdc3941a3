#include "core/message-dialog.h"
#include "support/dialogs.h"
#include "support/keys.h"
#include "support/main-loop.h"

#include <gtest/gtest.h>
#include <gtkmm/dialog.h>
#include <gtkmm/label.h>
#include <gtkmm/scrolledwindow.h>
#include <gtkmm/window.h>

#include <algorithm>
#include <functional>

namespace {

// Returns the first scrolled window in the widget, or null if there is none.
Gtk::ScrolledWindow* scrolled_in(Gtk::Widget& widget)
{
  if (auto* const scrolled = dynamic_cast<Gtk::ScrolledWindow*>(&widget))
    return scrolled;
  Gtk::ScrolledWindow* found = nullptr;
  if (auto* const container = dynamic_cast<Gtk::Container*>(&widget)) {
    container->foreach ([&found](Gtk::Widget& child) {
      if (!found)
        found = scrolled_in(child);
    });
  }
  return found;
}

} // namespace

TEST(MessageDialog, ShowsTitleTextAndButtonsInOrder)
{
  Message message;
  message.title = "Which?";
  message.text = "<i>One</i> or two";
  message.type = Gtk::MESSAGE_QUESTION;
  message.buttons = {{"gtk-yes", 12}, {"Not now", 13}};
  int response = 0;
  const SeenDialog seen = answer_next_dialog(13, [&] { response = run_message(message); });
  EXPECT_EQ(13, response);
  EXPECT_EQ("Which?", seen.title.raw());
  EXPECT_EQ("One or two", seen.text.raw());
  EXPECT_EQ(Gtk::MESSAGE_QUESTION, seen.message_type);
  EXPECT_EQ((std::vector<Glib::ustring>{"gtk-yes", "Not now"}), seen.buttons);
}

TEST(MessageDialog, PutsStandardButtonsFirst)
{
  Message message;
  message.text = "a";
  message.standard_buttons = Gtk::BUTTONS_OK;
  message.buttons = {{"More", 1}};
  const SeenDialog seen = answer_next_dialog(1, [&] { run_message(message); });
  ASSERT_EQ(2U, seen.buttons.size());
  EXPECT_EQ("More", seen.buttons[1].raw());
}

TEST(MessageDialog, ShowsPlainTextAsTyped)
{
  Message message;
  message.text = "Saved to /home/<b>x</b> &amp; y";
  message.text_is_markup = false;
  EXPECT_EQ("Saved to /home/<b>x</b> &amp; y",
            answer_next_dialog(Gtk::RESPONSE_OK, [&] { run_message(message); }).text.raw());
}

TEST(MessageDialog, StaysOnTheScreenWithAnyText)
{
  const struct {
    const char* why;
    std::string text;
  } cases[] = {
      {"one long line", std::string(3000, 'w')},
      {"many words",
       [] {
         std::string words;
         while (words.size() < 19000)
           words += "many words ";
         return words;
       }()},
      {"many lines",
       [] {
         std::string lines;
         for (int i = 0; i < 200; ++i)
           lines += "a line\n";
         return lines;
       }()},
      {"a very long line", std::string(19000, 'w')},
      {"many empty lines", std::string(19000, '\n')},
      {"wide letters",
       [] {
         std::string letters;
         while (letters.size() < 19000)
           letters += "\ufdfd";
         return letters;
       }()},
  };
  for (const auto& c : cases) {
    Message message;
    message.text = c.text;
    message.standard_buttons = Gtk::BUTTONS_OK;
    meet_next_dialog(
        [&](Gtk::Dialog& dialog) {
          int width = 0, height = 0;
          dialog.get_size(width, height);
          EXPECT_LT(height, 500) << c.why;
          EXPECT_LT(width, 900) << c.why;
          dialog.response(Gtk::RESPONSE_OK);
        },
        [&] { run_message(message); });
    EXPECT_EQ(c.text,
              answer_next_dialog(Gtk::RESPONSE_OK, [&] { run_message(message); }).text.raw())
        << c.why;
  }
}

TEST(MessageDialog, StaysOnTheScreenWithMarkupThatSetsSizes)
{
  for (const char* const markup :
       {"<span size=\"100000000\">huge</span>", "<span rise=\"100000000\">raised</span>",
        "<big><big><big><big><big><big><big><big><big><big><big><big><big><big><big><big><big>"
        "huge</big></big></big></big></big></big></big></big></big></big></big></big></big></big>"
        "</big></big></big>",
        "<span letter_spacing=\"100000000\">wide</span>"}) {
    Message message;
    message.text = markup;
    message.title = std::string(5000000, 'w');
    message.standard_buttons = Gtk::BUTTONS_OK;
    meet_next_dialog(
        [&](Gtk::Dialog& dialog) {
          int width = 0, height = 0;
          dialog.get_size(width, height);
          EXPECT_LT(height, 500) << markup;
          EXPECT_LT(width, 900) << markup;
          EXPECT_LT(dialog.get_title().size(), 500U);
          dialog.response(Gtk::RESPONSE_OK);
        },
        [&] { run_message(message); });
  }
}

// Pango lays out the rest of a run of letters again for each line, so the work grows with the
// square of the run's length. Short runs limit it.
TEST(MessageDialog, SplitsALongTextIntoShortRuns)
{
  Message message;
  message.text = std::string(10000, 'w');
  meet_next_dialog(
      [&](Gtk::Dialog& dialog) {
        auto& area = *dynamic_cast<Gtk::MessageDialog&>(dialog).get_message_area();
        int longest = 0;
        int labels = 0;
        const std::function<void(Gtk::Widget&)> visit = [&](Gtk::Widget& widget) {
          if (auto* const container = dynamic_cast<Gtk::Container*>(&widget))
            container->foreach ([&](Gtk::Widget& child) { visit(child); });
          auto* const label = dynamic_cast<Gtk::Label*>(&widget);
          if (!label || label->get_text().empty())
            return;
          ++labels;
          const auto layout = Pango::Layout::create(label->get_pango_context());
          layout->set_text(label->get_text());
          auto attributes = label->get_attributes();
          layout->set_attributes(attributes);
          PangoLayoutIter* const runs = pango_layout_get_iter(layout->gobj());
          do {
            if (const auto* const run = pango_layout_iter_get_run_readonly(runs))
              longest = std::max(longest, run->item->num_chars);
          } while (pango_layout_iter_next_run(runs));
          pango_layout_iter_free(runs);
        };
        visit(area);
        EXPECT_EQ(1, labels);
        EXPECT_GT(longest, 0);
        EXPECT_LE(longest, 200);
        dialog.response(Gtk::RESPONSE_OK);
      },
      [&] { run_message(message); });
}

TEST(MessageDialog, ShortensInTheMiddleATextThatWouldTakeMinutesToShow)
{
  Message message;
  message.text = "first " + std::string(19999, 'w') + "é" + std::string(5000000, 'w') + " last";
  const std::string shown =
      answer_next_dialog(Gtk::RESPONSE_OK, [&] { run_message(message); }).text;
  EXPECT_EQ("first " + std::string(9994, 'w') + "\u2026" + std::string(9995, 'w') + " last", shown);
}

TEST(MessageDialog, KeepsTheMarkupAndTheEndsOfALongText)
{
  std::string list;
  for (int i = 0; i < 3000; ++i)
    list += "survey " + std::to_string(i) + " &lt;&amp;&gt;\n";
  Message message;
  message.text = "See <a href=\"http://x.example/?a=1&amp;b=2\">this</a>:\n<b>" + list +
                 "</b>Click <i>Yes</i> or No.";
  const SeenDialog seen = answer_next_dialog(Gtk::RESPONSE_OK, [&] { run_message(message); });
  const std::string shown = seen.text;
  EXPECT_EQ(0U, shown.find("See this:\nsurvey 0 <&>\nsurvey 1 <&>\n")) << shown.substr(0, 100);
  const std::string end = "survey 2999 <&>\nClick Yes or No.";
  EXPECT_EQ(shown.size() - end.size(), shown.rfind(end));
  EXPECT_NE(std::string::npos, shown.find(" lines left out \u2026\n"));
  EXPECT_LT(shown.size(), 21000U);
  EXPECT_NE(std::string::npos,
            seen.markup.raw().find("<a href=\"http://x.example/?a=1&amp;b=2\">this</a>"));
}

TEST(MessageDialog, EscapesALongTextThatIsNotMarkupOnce)
{
  Message message;
  message.text = std::string(30000, 'w') + " <&";
  const std::string shown =
      answer_next_dialog(Gtk::RESPONSE_OK, [&] { run_message(message); }).text;
  EXPECT_EQ(std::string(10000, 'w') + "\u2026" + std::string(9997, 'w') + " <&", shown);
}

TEST(MessageDialog, BelongsToTheWindowInUse)
{
  Gtk::Window window;
  window.show();
  settle();
  Message message;
  message.text = "a";
  meet_next_dialog(
      [&](Gtk::Dialog& dialog) {
        EXPECT_EQ(&window, dialog.get_transient_for());
        dialog.response(Gtk::RESPONSE_OK);
      },
      [&] { run_message(message); });
}

TEST(MessageDialog, PrefersAModalWindowAsItsParent)
{
  Gtk::Window modal;
  modal.set_modal();
  modal.show();
  Gtk::Window other;
  other.show();
  settle();
  Message message;
  message.text = "a";
  meet_next_dialog(
      [&](Gtk::Dialog& dialog) {
        EXPECT_EQ(&modal, dialog.get_transient_for());
        dialog.response(Gtk::RESPONSE_OK);
      },
      [&] { run_message(message); });
}

TEST(MessageDialog, ReturnsDeleteEventWhenItIsClosed)
{
  Message message;
  message.text = "a";
  int response = 0;
  meet_next_dialog([](Gtk::Dialog& dialog) { dialog.close(); },
                   [&] { response = run_message(message); });
  EXPECT_EQ(Gtk::RESPONSE_DELETE_EVENT, response);
}

TEST(MessageDialog, AnswersWithItsFirstButtonToReturn)
{
  constexpr int no_answer = 99;
  for (const std::string& text : {std::string("short"), std::string(3000, 'w')}) {
    Message message;
    message.text = text;
    message.standard_buttons = Gtk::BUTTONS_NONE;
    message.buttons = {{"gtk-yes", 12}, {"gtk-no", 13}};
    const auto press_return = [](Gtk::Dialog& dialog) {
      bool is_answered = false;
      sigc::connection watch =
          dialog.signal_response().connect([&is_answered](int) { is_answered = true; });
      press_key(dialog, GDK_KEY_Return);
      watch.disconnect();
      if (!is_answered)
        dialog.response(no_answer);
    };
    int response = 0;
    meet_next_dialog(press_return, [&] { response = run_message(message); });
    EXPECT_EQ(12, response) << text.size() << " letters";
  }
}

TEST(MessageDialog, ShowsTheScrollBarOfALongTextAllTheTime)
{
  Message message;
  message.text = std::string(3000, 'w');
  const auto look = [](Gtk::Dialog& dialog) {
    const auto* const scrolled = scrolled_in(dialog);
    EXPECT_TRUE(scrolled && !scrolled->get_overlay_scrolling());
    dialog.response(Gtk::RESPONSE_OK);
  };
  meet_next_dialog(look, [&] { run_message(message); });
}
