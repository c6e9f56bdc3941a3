#include "support/dialogs.h"

#include <gdkmm/monitor.h>
#include <glibmm/main.h>
#include <gtest/gtest.h>
#include <gtkmm/button.h>
#include <gtkmm/label.h>
#include <gtkmm/main.h>
#include <gtkmm/messagedialog.h>

#include <memory>

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

// Fails the test if the dialog, including its frame, does not fit the screen.
void expect_on_screen(Gtk::Dialog& dialog)
{
  Gdk::Rectangle frame;
  dialog.get_window()->get_frame_extents(frame);
  Gdk::Rectangle screen;
  dialog.get_display()->get_monitor_at_window(dialog.get_window())->get_workarea(screen);
  EXPECT_LE(frame.get_width(), screen.get_width()) << dialog.get_title();
  EXPECT_LE(frame.get_height(), screen.get_height()) << dialog.get_title();
}

// During its lifetime, calls a function with each dialog that appears, after the dialog has been
// drawn. It uses a signal of the toolkit and does not poll: a source that is always ready would
// keep settle() from returning.
class Watch
{
public:
  using Meet = std::function<void(Gtk::Dialog&)>;

  explicit Watch(const Meet& the_meet) : meet(std::make_shared<Meet>(the_meet))
  {
    hook = g_signal_add_emission_hook(map_signal(), 0, &Watch::on_map, this, nullptr);
  }
  ~Watch()
  {
    g_signal_remove_emission_hook(map_signal(), hook);
    *meet = nullptr;
  }
  Watch(const Watch&) = delete;
  Watch& operator=(const Watch&) = delete;

private:
  static guint map_signal()
  {
    static const gpointer loaded = g_type_class_ref(GTK_TYPE_WIDGET);
    return loaded ? g_signal_lookup("map", GTK_TYPE_WIDGET) : 0;
  }

  static gboolean on_map(GSignalInvocationHint* /*hint*/, guint /*count*/, const GValue* values,
                         gpointer watch)
  {
    auto* widget = static_cast<GtkWidget*>(g_value_get_object(values));
    if (GTK_IS_DIALOG(widget))
      static_cast<Watch*>(watch)->hand_on_later(GTK_DIALOG(widget));
    return TRUE; // keeps the hook
  }

  void hand_on_later(GtkDialog* shown) const
  {
    g_object_ref(shown);
    Glib::signal_idle().connect_once(
        [meet = meet, shown] {
          if (*meet && gtk_widget_get_visible(GTK_WIDGET(shown))) {
            expect_on_screen(*Glib::wrap(shown));
            (*meet)(*Glib::wrap(shown));
          }
          g_object_unref(shown);
        },
        Glib::PRIORITY_LOW);
  }

  std::shared_ptr<Meet> meet; // empty when the watch has ended
  gulong hook = 0;
};

} // namespace

SeenDialog describe(Gtk::Dialog& dialog)
{
  SeenDialog seen;
  seen.title = dialog.get_title();
  seen.has_icon = !dialog.get_icon_list().empty();
  if (auto* message = dynamic_cast<Gtk::MessageDialog*>(&dialog)) {
    seen.message_type = message->property_message_type().get_value();
    seen.markup = message->property_text().get_value();
  }
  collect_labels(*dialog.get_content_area(), seen.text);
  for (auto* child : dialog.get_action_area()->get_children()) {
    if (auto* button = dynamic_cast<Gtk::Button*>(child)) {
      seen.buttons.push_back(button->get_label());
      seen.responses.push_back(gtk_dialog_get_response_for_widget(dialog.gobj(), child->gobj()));
    }
  }
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
  EXPECT_EQ(expected, count) << "dialogs opened";
}

void meet_next_dialog(const std::function<void(Gtk::Dialog&)>& meet,
                      const std::function<void()>& action)
{
  meet_dialogs(1, meet, action);
}
