#pragma once

#include "ui/zone-tree.h"

#include <glibmm/ustring.h>
#include <gtkmm/treeiter.h>
#include <gtkmm/treemodelcolumn.h>
#include <gtkmm/treestore.h>

#include <vector>

// The columns of the zone tree.
class GeogTreeColumns : public Gtk::TreeModelColumnRecord
{
public:
  GeogTreeColumns();
  // Writes all columns of a row.
  void set(const Gtk::TreeRow& row, int id, const Glib::ustring& name) const;
  // Fills an empty store with the rows of a zone tree.
  void fill(const Glib::RefPtr<Gtk::TreeStore>& store, const std::vector<ZoneRow>& rows) const;

  Gtk::TreeModelColumn<int> col_id;
  Gtk::TreeModelColumn<Glib::ustring> col_name;
  Gtk::TreeModelColumn<Glib::ustring> col_label; // "id: name"

private:
  // Adds the rows of `depth` in [first, last), with all rows below them.
  void fill_level(GtkTreeStore* store, GtkTreeIter* parent, const std::vector<ZoneRow>& rows,
                  std::size_t first, std::size_t last, int depth) const;
};
