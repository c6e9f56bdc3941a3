#include "core/blocking-call.h"
#include "support/main-loop.h"

#include <gtest/gtest.h>
#include <gtkmm/button.h>
#include <gtkmm/entry.h>
#include <gtkmm/grid.h>
#include <gtkmm/messagedialog.h>
#include <gtkmm/window.h>

#include <string>

namespace {

// A visible window with an entry that has the focus, and a button.
class BlockingCalls : public testing::Test
{
public:
  BlockingCalls()
  {
    grid.attach(entry, 0, 0, 1, 1);
    grid.attach(button, 0, 1, 1, 1);
    window.add(grid);
    window.show_all();
    window.present();
    entry.grab_focus();
    button.signal_clicked().connect([this] { ++clicks; });
    let_draw(window);
    type(GDK_KEY_a);
    wait_until("keys arrive", [this] { return !entry.get_text().empty(); });
    entry.set_text("");
  }

  // Adds a key press to the queue of events.
  void type(guint key)
  {
    for (const GdkEventType type : {GDK_KEY_PRESS, GDK_KEY_RELEASE}) {
      GdkEvent* const event = new_event(type, GDK_SOURCE_KEYBOARD);
      event->key.keyval = key;
      GdkKeymapKey* keys = nullptr;
      int count = 0;
      gdk_keymap_get_entries_for_keyval(gdk_keymap_get_for_display(display()), key, &keys, &count);
      event->key.hardware_keycode = static_cast<guint16>(count > 0 ? keys[0].keycode : 0);
      g_free(keys);
      put(event);
    }
  }
  // Adds a click on the button to the queue of events.
  void click_button()
  {
    for (const GdkEventType type : {GDK_ENTER_NOTIFY, GDK_BUTTON_PRESS, GDK_BUTTON_RELEASE}) {
      GdkEvent* const event = new_event(type, GDK_SOURCE_MOUSE);
      g_object_unref(event->any.window);
      event->any.window = GDK_WINDOW(g_object_ref(button.get_event_window()->gobj()));
      if (type == GDK_ENTER_NOTIFY) {
        event->crossing.mode = GDK_CROSSING_NORMAL;
      } else {
        event->button.button = 1;
        event->button.x = event->button.y = 5;
      }
      put(event);
    }
  }

  GdkCursor* cursor() const
  {
    return gdk_window_get_cursor(const_cast<GdkWindow*>(window.get_window()->gobj()));
  }

  static GdkDisplay* display() { return gdk_display_get_default(); }

  GdkEvent* new_event(GdkEventType type, GdkInputSource source)
  {
    GdkEvent* const event = gdk_event_new(type);
    event->any.window = GDK_WINDOW(g_object_ref(window.get_window()->gobj()));
    GdkSeat* const seat = gdk_display_get_default_seat(display());
    gdk_event_set_device(event, source == GDK_SOURCE_KEYBOARD ? gdk_seat_get_keyboard(seat)
                                                              : gdk_seat_get_pointer(seat));
    return event;
  }
  static void put(GdkEvent* event)
  {
    gdk_display_put_event(display(), event);
    gdk_event_free(event);
  }

  Gtk::Window window;
  Gtk::Grid grid;
  Gtk::Entry entry;
  Gtk::Button button{"Press me"};
  int clicks = 0;
};

} // namespace

TEST_F(BlockingCalls, ShowTheBusyCursorOnlyWhileTheyLast)
{
  Gtk::Window hidden;
  GdkCursor* const before = cursor();
  {
    const BlockingCall call;
    EXPECT_NE(nullptr, cursor());
    EXPECT_NE(before, cursor());
  }
  EXPECT_EQ(before, cursor());

  const auto own = Gdk::Cursor::create(window.get_display(), "text");
  window.get_window()->set_cursor(own);
  {
    const BlockingCall call;
    EXPECT_NE(own->gobj(), cursor());
  }
  EXPECT_EQ(own->gobj(), cursor());
}

TEST_F(BlockingCalls, DiscardKeysAndClicks)
{
  {
    const BlockingCall call;
    type(GDK_KEY_x);
    click_button();
  }
  settle();
  EXPECT_EQ("", entry.get_text());
  EXPECT_EQ(0, clicks);

  type(GDK_KEY_y);
  click_button();
  wait_until("later input arrives", [this] { return clicks == 1 && entry.get_text() == "y"; });
}

TEST_F(BlockingCalls, KeepAllOtherEvents)
{
  bool was_resized = false;
  window.signal_configure_event().connect(
      [&](GdkEventConfigure* event) {
        was_resized = was_resized || event->width == 444;
        return false;
      },
      false);
  {
    const BlockingCall call;
    window.get_window()->resize(444, 222);
  }
  wait_until("the window receives its new size", [&] { return was_resized; });
}

TEST_F(BlockingCalls, HideADialogThatWasJustAnswered)
{
  const auto color_at = [](int x, int y) {
    const auto root = Gdk::Screen::get_default()->get_root_window();
    const auto pixel = Gdk::Pixbuf::create(root, x, y, 1, 1);
    std::string color(reinterpret_cast<const char*>(pixel->get_pixels()), 3);
    return color;
  };
  window.move(0, 0);
  window.resize(400, 300);
  let_draw(window);
  const std::string before = color_at(300, 250);

  Gtk::Window dialog(Gtk::WINDOW_POPUP);
  Gdk::RGBA red("red");
  dialog.override_background_color(red);
  dialog.move(290, 240);
  dialog.resize(50, 50);
  dialog.show();
  let_draw(dialog);
  ASSERT_NE(before, color_at(300, 250));

  dialog.hide();
  const BlockingCall call;
  EXPECT_EQ(before, color_at(300, 250));
}
