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

// Finds rows of a tree of two levels by their names while the user types in the tree. The text
// appears in a small field above the tree's corner, which has the focus during the search.
// Names that begin with the text come first, then names with a word that begins with it; in
// both groups, species come before families. The search includes collapsed families. Up and
// Down go to the other matches, Return opens the row that was found, and Escape, Tab or a click
// elsewhere ends the search.
class NameFinder
{
public:
  using NameColumn = Gtk::TreeModelColumn<Glib::ustring>;
  // The action of Return on the row that was found. `time` is that of the event.
  using OpenRow = std::function<void(const Gtk::TreePath& path, guint32 time)>;

  NameFinder() = default;
  NameFinder(const NameFinder&) = delete;
  NameFinder& operator=(const NameFinder&) = delete;

  // Attaches the search to a tree, in place of the toolkit's own search. Call it once.
  void attach(Gtk::TreeView& the_tree, const OpenRow& open_found_row);
  // Sets the columns whose names the tree shows. They contain markup.
  void set_names(const std::vector<const NameColumn*>& columns);

  // The field. It is created by the first search, because most trees never have one.
  Gtk::SearchEntry* entry = nullptr;

private:
  void make_field();
  void hide();
  bool on_tree_key(GdkEventKey* event);
  bool on_entry_key(GdkEventKey* event);
  void on_activate();
  void start(const Glib::ustring& text);
  void stop();
  // Goes `step` matches forward or back; 0 goes to the first match of the text.
  void go_to_match(int step);
  std::vector<Gtk::TreePath> matches(const std::string& text) const;
  int quality(const Gtk::TreeIter& row, const std::string& text) const;
  void show_row(const Gtk::TreePath& path);
  void show_whether_found(bool is_found);

  Gtk::TreeView* tree = nullptr;
  std::unique_ptr<Gtk::Popover> bubble; // contains the field
  OpenRow open_row;
  std::vector<const NameColumn*> names;
  int current = 0;          // the index of the current match
  Gtk::TreePath found;      // its row; empty if there is none
  Gtk::TreePath own_family; // the family that this search has expanded; empty if none
};
