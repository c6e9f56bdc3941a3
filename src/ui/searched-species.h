#pragma once

#include <glibmm/refptr.h>
#include <gtkmm/treemodelcolumn.h>
#include <gtkmm/treestore.h>

#include <cstddef>
#include <map>
#include <string>
#include <vector>

// What a search sees of the store of all species: ids, and names in lower case. Each
// is worked out once, when a search first needs it, since lowering thousands of names
// at every keystroke takes longer than finding the words in them.
class SearchedSpecies
{
public:
  using NameColumn = Gtk::TreeModelColumn<Glib::ustring>;

  // Forgets all rows; they are read anew from `the_store` once they are asked for.
  void read_later(const Glib::RefPtr<Gtk::TreeStore>& the_store,
                  const Gtk::TreeModelColumn<int>& the_id_column);

  // By row, each family in front of its species. An id below 0 is a family's.
  const std::vector<int>& ids();
  const std::vector<std::string>& names(const NameColumn& column);

private:
  template<typename Read>
  void for_each_row(const Read& read) const;

  Glib::RefPtr<Gtk::TreeStore> store;
  const Gtk::TreeModelColumn<int>* id_column = nullptr;
  std::vector<int> known_ids;
  std::map<int, std::vector<std::string>> known_names; // by the column's number
};
