#pragma once

#include <gtkmm/container.h>

// Puts the children of the container and of all grids in it into their visual order: row by
// row, from the left. Screen readers read a grid from the child that was attached last to the
// first one. Call it before the window is shown.
void read_in_visual_order(Gtk::Container& container);
