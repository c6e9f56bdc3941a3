#pragma once

#include <glibmm/ustring.h>
#include <gtkmm/treeiter.h>
#include <gtkmm/treemodelcolumn.h>

// The row of the zone tree.
class GeogTreeColumns : public Gtk::TreeModelColumnRecord
{
public:
  GeogTreeColumns();
  void set(const Gtk::TreeRow& row, int id, const Glib::ustring& name) const;

  Gtk::TreeModelColumn<int> col_id;
  Gtk::TreeModelColumn<Glib::ustring> col_name;
  Gtk::TreeModelColumn<Glib::ustring> col_label; // "id: name"
};
