#pragma once

namespace Gtk {
class Label;
class Widget;
class Window;
} // namespace Gtk

// Adds the program's style sheet to the desktop's theme, once a process. The
// program also works without it: a sheet that cannot be used is one line on
// standard output.
void load_style();

// Whether fields and lists have a dark ground in the theme that the widget has.
bool has_dark_theme(const Gtk::Widget& widget);

// Gives a window the style class "dark" whenever its theme is dark. Call it once.
void follow_theme(Gtk::Window& window);

// Makes words on shaded ground in a label's markup readable under every theme, and
// tells the shades apart by lines, too, as species_markup.h does for rows. Call it
// whenever the label has got another text.
void make_shades_readable(Gtk::Label& label);
