#pragma once

namespace Gtk {
class Label;
class Widget;
class Window;
} // namespace Gtk

// Adds the program's style sheet to the desktop's theme, once for the process. If the sheet
// cannot be used, prints a line to standard output; the program works without it.
void load_style();

// Returns whether fields and lists have a dark background in the widget's theme.
bool has_dark_theme(const Gtk::Widget& widget);

// Gives a window the style class "dark" whenever its theme is dark. Call it once.
void follow_theme(Gtk::Window& window);

// Makes shaded words in a label's markup readable in every theme, and underlines them like the
// rows of species-markup.h. Call it after each change of the label's text.
void make_shades_readable(Gtk::Label& label);
