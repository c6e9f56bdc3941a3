#include "ui/geog-tree-columns.h"

#include <string>

namespace {

std::string label_of(int id, const Glib::ustring& name)
{
  return std::to_string(id) + ": " + name.raw();
}

} // namespace

GeogTreeColumns::GeogTreeColumns()
{
  add(col_id);
  add(col_name);
  add(col_label);
}

void GeogTreeColumns::set(const Gtk::TreeRow& row, int id, const Glib::ustring& name) const
{
  row[col_id] = id;
  row[col_name] = name;
  row[col_label] = Glib::ustring(label_of(id, name));
}

void GeogTreeColumns::fill(const Glib::RefPtr<Gtk::TreeStore>& store,
                           const std::vector<ZoneRow>& rows) const
{
  fill_level(store->gobj(), nullptr, rows, 0, rows.size(), 0);
}

// Adds the rows from the last to the first, because a store prepends in constant time but
// walks along the list to append: thousands of siblings would take seconds. Inserts each row
// with its values, because a store emits a signal for each value that is set later.
void GeogTreeColumns::fill_level(GtkTreeStore* store, GtkTreeIter* parent,
                                 const std::vector<ZoneRow>& rows, std::size_t first,
                                 std::size_t last, int depth) const
{
  for (std::size_t i = last; i-- > first;) {
    if (rows[i].depth != depth)
      continue;
    const Glib::ustring& name = *rows[i].name;
    GtkTreeIter row;
    gtk_tree_store_insert_with_values(store, &row, parent, 0, col_id.index(), rows[i].id,
                                      col_name.index(), name.c_str(), col_label.index(),
                                      label_of(rows[i].id, name).c_str(), -1);
    fill_level(store, &row, rows, i + 1, last, depth + 1);
    last = i;
  }
}
