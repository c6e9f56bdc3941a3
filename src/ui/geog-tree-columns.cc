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
  std::vector<Gtk::TreeIter> open; // the latest row of each depth
  for (const auto& row : rows) {
    const auto depth = static_cast<std::size_t>(row.depth);
    open.resize(depth);
    open.push_back(depth == 0 ? store->append() : store->append(open.back()->children()));
    set(*open.back(), row.id, row.name);
  }
}
