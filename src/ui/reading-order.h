#pragma once

#include <gtkmm/container.h>

// Puts the children of all grids inside, and of the container itself if it is one, into the
// order in which they are seen: row by row, from the left. Screen readers read a grid from
// the child that was attached last to the first one. Call it before the window is shown.
void read_in_visual_order(Gtk::Container& container);
