#include "support/dialogs.h"

#include <glibmm/main.h>
#include <gtest/gtest.h>
#include <gtkmm/button.h>
#include <gtkmm/label.h>
#include <gtkmm/main.h>
#include <gtkmm/messagedialog.h>

#include <memory>
#include <set>

namespace {

void collect_labels(Gtk::Widget& widget, Glib::ustring& text)
{
  if (auto* label = dynamic_cast<Gtk::Label*>(&widget)) {
    if (label->get_visible() && !label->get_text().empty())
      text += (text.empty() ? "" : "\n") + label->get_text();
  } else if (dynamic_cast<Gtk::Button*>(&widget)) {
    return;
  } else if (auto* container = dynamic_cast<Gtk::Container*>(&widget)) {
    for (auto* child : container->get_children())
      collect_labels(*child, text);
  }
}

// The visible dialog on top, null if there is none.
Gtk::Dialog* open_dialog(const std::set<Gtk::Dialog*>& done)
{
  for (auto* window : Gtk::Window::list_toplevels()) {
    auto* dialog = dynamic_cast<Gtk::Dialog*>(window);
    if (dialog && dialog->get_visible() && done.count(dialog) == 0)
      return dialog;
  }
  return nullptr;
}

// Looks for dialogs as long as it lives and hands each one on, once.
class Watch
{
public:
  explicit Watch(const std::function<void(Gtk::Dialog&)>& meet)
  {
    connection = Glib::signal_timeout().connect(
        [open = met, meet] {
          if (auto* dialog = open_dialog(*open)) {
            open->insert(dialog);
            dialog->signal_hide().connect([open, dialog] { open->erase(dialog); });
            meet(*dialog);
          }
          return true;
        },
        5, Glib::PRIORITY_LOW); // low: the dialog is laid out and drawn first
  }
  ~Watch() { connection.disconnect(); }
  Watch(const Watch&) = delete;
  Watch& operator=(const Watch&) = delete;

private:
  // Those still shown: a dialog may be gone, or its place taken, once hidden.
  std::shared_ptr<std::set<Gtk::Dialog*>> met = std::make_shared<std::set<Gtk::Dialog*>>();
  sigc::connection connection;
};

} // namespace

SeenDialog describe(Gtk::Dialog& dialog)
{
  SeenDialog seen;
  seen.title = dialog.get_title();
  seen.has_icon = !dialog.get_icon_list().empty();
  if (auto* message = dynamic_cast<Gtk::MessageDialog*>(&dialog))
    seen.message_type = message->property_message_type().get_value();
  collect_labels(*dialog.get_content_area(), seen.text);
  for (auto* child : dialog.get_action_area()->get_children())
    if (auto* button = dynamic_cast<Gtk::Button*>(child))
      seen.buttons.push_back(button->get_label());
  return seen;
}

std::vector<SeenDialog> answer_dialogs(const std::vector<int>& responses,
                                       const std::function<void()>& action)
{
  std::vector<SeenDialog> seen;
  {
    const Watch watch([&](Gtk::Dialog& dialog) {
      seen.push_back(describe(dialog));
      if (seen.size() > responses.size())
        ADD_FAILURE() << "unexpected dialog: " << seen.back().title << ": " << seen.back().text;
      dialog.response(seen.size() <= responses.size() ? responses[seen.size() - 1]
                                                      : Gtk::RESPONSE_DELETE_EVENT);
    });
    action();
  }
  EXPECT_EQ(responses.size(), seen.size()) << "dialogs answered";
  return seen;
}

std::vector<SeenDialog> answer_all_dialogs(int response, const std::function<void()>& action)
{
  std::vector<SeenDialog> seen;
  const Watch watch([&](Gtk::Dialog& dialog) {
    seen.push_back(describe(dialog));
    dialog.response(response);
  });
  action();
  return seen;
}

SeenDialog answer_next_dialog(int response, const std::function<void()>& action)
{
  const auto seen = answer_dialogs({response}, action);
  return seen.empty() ? SeenDialog() : seen.front();
}

void expect_no_dialog(const std::function<void()>& action)
{
  answer_dialogs({}, action);
}

void meet_dialogs(int expected, const std::function<void(Gtk::Dialog&)>& meet,
                  const std::function<void()>& action)
{
  int count = 0;
  {
    const Watch watch([&](Gtk::Dialog& dialog) {
      ++count;
      meet(dialog);
    });
    action();
  }
  EXPECT_EQ(expected, count) << "dialogs met";
}

void meet_next_dialog(const std::function<void(Gtk::Dialog&)>& meet,
                      const std::function<void()>& action)
{
  meet_dialogs(1, meet, action);
}
