#pragma once

#include <glibmm/refptr.h>
#include <gtkmm/treemodelcolumn.h>
#include <gtkmm/treestore.h>

#include <cstddef>
#include <map>
#include <string>
#include <vector>

// The data of the store of all species for a search: ids, and names in lower case. This class
// computes them when a search first needs them, and stores them. Converting thousands of names
// at every keystroke would take longer than finding the words in them.
class SearchedSpecies
{
public:
  using NameColumn = Gtk::TreeModelColumn<Glib::ustring>;

  // Discards all rows. The next access reads them from `the_store`. REQUIRES: `the_id_column`
  // outlives this object.
  void read_later(const Glib::RefPtr<Gtk::TreeStore>& the_store,
                  const Gtk::TreeModelColumn<int>& the_id_column);

  // Return ids and names by row. Each family precedes its species and has a negative id.
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
