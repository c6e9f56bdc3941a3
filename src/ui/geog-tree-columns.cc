#include "ui/geog-tree-columns.h"

#include <string>

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
  row[col_label] = Glib::ustring(std::to_string(id) + ": " + name.raw());
}

void GeogTreeColumns::fill(const Glib::RefPtr<Gtk::TreeStore>& store,
                           const std::vector<ZoneRow>& rows) const
{
  fill_level(store, store->children(), rows, 0, rows.size(), 0);
}

// From the last row to the first, since a store finds the start of a list at
// once but walks to its end: thousands of rows side by side would take seconds.
void GeogTreeColumns::fill_level(const Glib::RefPtr<Gtk::TreeStore>& store,
                                 const Gtk::TreeNodeChildren& level,
                                 const std::vector<ZoneRow>& rows, std::size_t first,
                                 std::size_t last, int depth) const
{
  for (std::size_t i = last; i-- > first;) {
    if (rows[i].depth != depth)
      continue;
    const Gtk::TreeRow row = *store->prepend(level);
    set(row, rows[i].id, rows[i].name);
    fill_level(store, row.children(), rows, i + 1, last, depth + 1);
    last = i;
  }
}
