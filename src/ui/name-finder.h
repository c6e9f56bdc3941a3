#pragma once

#include <gtkmm/popover.h>
#include <gtkmm/searchentry.h>
#include <gtkmm/treemodelcolumn.h>
#include <gtkmm/treepath.h>
#include <gtkmm/treeview.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

// Finds rows of a tree of two levels by their names while somebody types in it. The text
// appears in a small field above the tree's corner, which has the keyboard meanwhile. Names
// that begin with the text come first, then those with a word that begins with it; folded
// families count as well. Up and Down go to the other matches, Return opens the row that
// was found, and Escape, Tab or a click elsewhere ends the search.
class NameFinder
{
public:
  using NameColumn = Gtk::TreeModelColumn<Glib::ustring>;
  // What Return does with the row that was found, at the time of that event.
  using OpenRow = std::function<void(const Gtk::TreePath& path, guint32 time)>;

  NameFinder() = default;
  NameFinder(const NameFinder&) = delete;
  NameFinder& operator=(const NameFinder&) = delete;

  // Starts to listen to the tree, once; it takes the place of the toolkit's own search.
  void attach(Gtk::TreeView& the_tree, const OpenRow& open_found_row);
  // The columns whose names the tree shows, as markup.
  void set_names(const std::vector<const NameColumn*>& columns);

  // The field; null before the first search, since most trees never have one.
  Gtk::SearchEntry* entry = nullptr;

private:
  void make_field();
  void hide();
  bool on_tree_key(GdkEventKey* event);
  bool on_entry_key(GdkEventKey* event);
  void on_activate();
  void start(const Glib::ustring& text);
  void stop();
  // Goes to the first match of the text, or to one so many matches further.
  void go_to_match(int step);
  std::vector<Gtk::TreePath> matches(const std::string& text) const;
  int quality(const Gtk::TreeIter& row, const std::string& text) const;
  void show_row(const Gtk::TreePath& path);
  void show_whether_found(bool is_found);

  Gtk::TreeView* tree = nullptr;
  std::unique_ptr<Gtk::Popover> bubble; // holds the field
  OpenRow open_row;
  std::vector<const NameColumn*> names;
  int current = 0;          // number of the match that is shown
  Gtk::TreePath found;      // its row; empty if there is none
  Gtk::TreePath own_family; // the family that this search has unfolded; empty if none
};
