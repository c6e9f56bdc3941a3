#pragma once

#include <gtkmm/treemodelfilter.h>
#include <gtkmm/treestore.h>

// Models for tables of thousands of rows, of the toolkit's own types. Those that gtkmm
// makes can be derived from, and therefore hand every step from row to row and every
// look at a cell to C++ and back, which takes longer than the step itself: filling both
// tables of species takes a sixth less time with these, with huge data.

Glib::RefPtr<Gtk::TreeStore> plain_store(const Gtk::TreeModelColumnRecord& columns);

Glib::RefPtr<Gtk::TreeModelFilter>
plain_filter(const Glib::RefPtr<Gtk::TreeStore>& store,
             const Gtk::TreeModelFilter::SlotVisible& is_visible);
