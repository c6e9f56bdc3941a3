#pragma once

#include <gtkmm/treemodelfilter.h>
#include <gtkmm/treestore.h>

// These functions create models of the toolkit's own types, for tables of thousands of rows.
// gtkmm creates models that a C++ class can extend. Therefore they route every step to another
// row and every access to a cell through C++, which takes longer than the step itself.
// With huge data, filling both tables of species takes a sixth less time with these models.

// Returns a new empty store with these columns.
Glib::RefPtr<Gtk::TreeStore> plain_store(const Gtk::TreeModelColumnRecord& columns);

// Returns a new filter that shows the rows of `store` for which `is_visible` returns true.
Glib::RefPtr<Gtk::TreeModelFilter>
plain_filter(const Glib::RefPtr<Gtk::TreeStore>& store,
             const Gtk::TreeModelFilter::SlotVisible& is_visible);
