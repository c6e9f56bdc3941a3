#pragma once

#include <gdkmm/rgba.h>
#include <glibmm/ustring.h>
#include <gtkmm/stylecontext.h>
#include <gtkmm/widget.h>

#include <vector>

// A text on the screen, in the colour of its style, and the colour around it.
struct ShownText {
  Glib::ustring words;
  Gdk::RGBA colour;
  Gdk::RGBA ground;
  bool is_bold = false;
  bool has_own_ground = false; // from its markup
  bool is_value = false;       // of a field, which is to be read even if it is insensitive
  bool is_sensitive = true;
};

// How far two colours stand apart, from 1 (alike) to 21 (black and white), by
// the definition of the Web Content Accessibility Guidelines.
double contrast(const Gdk::RGBA& one, const Gdk::RGBA& other);

// `top` painted on an opaque `ground`.
Gdk::RGBA blend(const Gdk::RGBA& top, const Gdk::RGBA& ground);

// All texts of labels, buttons, fields and headings of lists that a window
// shows just now, with the ground as it was drawn.
std::vector<ShownText> shown_texts(Gtk::Widget& toplevel);

// Some markup with each of its colours, as shown in `colour` on `ground`.
std::vector<ShownText> texts_of_markup(const Glib::ustring& markup, const Gdk::RGBA& colour,
                                       const Gdk::RGBA& ground);

// What a widget's style says about rows or entries in such a state.
ShownText styled_text(const Gtk::Widget& widget, Gtk::StateFlags state);
