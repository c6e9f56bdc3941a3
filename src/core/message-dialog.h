#pragma once

#include <glibmm/ustring.h>
#include <gtkmm/messagedialog.h>

#include <vector>

// The contents of a dialog with a question or a notice.
struct Message {
  struct Button {
    Glib::ustring label; // a text or a stock id
    int response;
  };

  Glib::ustring title;
  Glib::ustring text;
  bool text_is_markup = true; // text that is not valid markup is shown literally
  Gtk::MessageType type = Gtk::MESSAGE_INFO;
  Gtk::ButtonsType standard_buttons = Gtk::BUTTONS_NONE;
  std::vector<Button> buttons; // more buttons, after the standard ones
  bool modal = true;
};

// Shows the message above the window in use, with the program's icons, and waits for the
// answer. Returns the response, or Gtk::RESPONSE_DELETE_EVENT if the user closes the dialog.
// Omits the middle of a very long text. Without a display, or before GTK is initialised,
// shows nothing and returns Gtk::RESPONSE_NONE.
int run_message(const Message& message);

// Returns the program's icons, except those whose file could not be loaded: the toolkit
// does not accept null.
std::vector<Glib::RefPtr<Gdk::Pixbuf>> usable_icons();
