#include "ui/searched-species.h"

void SearchedSpecies::read_later(const Glib::RefPtr<Gtk::TreeStore>& the_store,
                                 const Gtk::TreeModelColumn<int>& the_id_column)
{
  store = the_store;
  id_column = &the_id_column;
  known_ids.clear();
  known_names.clear();
}

template<typename Read>
void SearchedSpecies::for_each_row(const Read& read) const
{
  if (!store)
    return;
  for (const auto& family : store->children()) {
    read(family);
    for (const auto& species : family.children())
      read(species);
  }
}

const std::vector<int>& SearchedSpecies::ids()
{
  if (known_ids.empty())
    for_each_row(
        [this](const Gtk::TreeRow& row) { known_ids.push_back(row.get_value(*id_column)); });
  return known_ids;
}

const std::vector<std::string>& SearchedSpecies::names(const NameColumn& column)
{
  auto& lowered = known_names[column.index()];
  if (lowered.empty()) {
    for_each_row([&](const Gtk::TreeRow& row) {
      lowered.push_back(row.get_value(column).lowercase().raw());
    });
  }
  return lowered;
}
