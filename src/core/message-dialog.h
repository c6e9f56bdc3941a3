#pragma once

#include <glibmm/ustring.h>
#include <gtkmm/messagedialog.h>

#include <vector>

// A question or a notice in a dialog of its own.
struct Message {
  struct Button {
    Glib::ustring label; // text or stock id
    int response;
  };

  Glib::ustring title;
  Glib::ustring text;
  bool text_is_markup = true; // if it does not parse, it is shown as it stands
  Gtk::MessageType type = Gtk::MESSAGE_INFO;
  Gtk::ButtonsType standard_buttons = Gtk::BUTTONS_NONE;
  std::vector<Button> buttons; // after the standard ones
  bool modal = true;
};

// Shows the message above the window in use, with the program's icons, and
// returns the response once it has been answered; closing the dialog gives
// Gtk::RESPONSE_DELETE_EVENT. The middle of a very long text is left out. Without a display, or
// before GTK is initialised, nothing is shown and the result is Gtk::RESPONSE_NONE.
int run_message(const Message& message);

// The program's icons without those whose file could not be loaded, which the
// toolkit does not take.
std::vector<Glib::RefPtr<Gdk::Pixbuf>> usable_icons();
