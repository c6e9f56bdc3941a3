#pragma once

#include <gdkmm/rgba.h>
#include <glibmm/ustring.h>
#include <gtkmm/stylecontext.h>
#include <gtkmm/widget.h>

#include <vector>

// A visible text with its colour and the colour of its background.
struct ShownText {
  Glib::ustring words;
  Gdk::RGBA colour;
  Gdk::RGBA ground;
  bool is_bold = false;
  bool has_own_ground = false; // from its markup
  bool is_value = false;       // of a field, which must be readable even if it is insensitive
  bool is_sensitive = true;
};

// Returns the contrast of two colours, from 1 (equal) to 21 (black and white), as defined by the
// Web Content Accessibility Guidelines.
double contrast(const Gdk::RGBA& one, const Gdk::RGBA& other);

// Returns the colour of `top` on an opaque `ground`.
Gdk::RGBA blend(const Gdk::RGBA& top, const Gdk::RGBA& ground);

// Returns all visible texts of labels, buttons, fields and headings of lists in a window, with
// their drawn background.
std::vector<ShownText> shown_texts(Gtk::Widget& toplevel);

// Returns the parts of a markup with their colours, if it is shown in `colour` on `ground`.
// Returns the markup as one part if Pango cannot parse it.
std::vector<ShownText> texts_of_markup(const Glib::ustring& markup, const Gdk::RGBA& colour,
                                       const Gdk::RGBA& ground);

// Returns the colours of a widget's style in `state`, without words.
ShownText styled_text(const Gtk::Widget& widget, Gtk::StateFlags state);
