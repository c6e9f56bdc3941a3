#pragma once

#include "support/window-fixture.h"

#include <gtkmm/menu.h>
#include <gtkmm/treepath.h>
#include <gtkmm/treestore.h>
#include <gtkmm/treeview.h>

#include <map>
#include <string>

// A visible window with a survey, for tests of the species tables.
class SpeciesWindowTest : public WindowTest
{
public:
  // Opens a window, chooses location and survey type, as the user does, and turns to the page of
  // listed species.
  void open_survey(const Glib::ustring& subregion, const Glib::ustring& survey_type);
  void open_northwest() { open_survey("Northwest", "Northwest: abundance"); }

  // Returns a store or filter as a text with one line for each row: families as "Greenlings:",
  // species as "  11 Lingcod = None", with a star after species of the view. Names have no markup.
  std::string rows(const Glib::RefPtr<Gtk::TreeModel>& model) const;
  // Returns rows() of the store of listed or unlisted species.
  std::string listed_rows() const;
  std::string unlisted_rows() const;
  // Returns which families of the page's tree are expanded, as "0 1 0".
  std::string unfolded() const;
  // Returns the titles of the columns of the page's tree, as "ID|Common Name".
  std::string column_titles() const { return titles_of(tree()); }
  static std::string titles_of(Gtk::TreeView& any_tree);
  // Returns the path of a species' first row in the page's tree, as "1:0".
  Gtk::TreePath path_of(int id) const;

  // Chooses an item of a menu by its label. Fails the test if there is none.
  static void choose_item(Gtk::Menu& menu, const Glib::ustring& label);
  // Returns the labels of all items of a menu, as "None|Single (1)".
  static std::string item_labels(Gtk::Menu& menu);
  // Sets the abundance of a species, as an item of its menu does.
  void mark(int id, int abundance) const;
  // Closes the open menu and returns it, or returns null if there is none.
  Gtk::Menu* close_open_menu() const;

  // Returns a press of a mouse button on the name in a row of the page's tree.
  GdkEventButton press_on(const Gtk::TreePath& path, unsigned int button) const
  {
    return press_in(tree(), path, button);
  }
  // Like press_on(), for any tree of species. Scrolls to the row.
  static GdkEventButton press_in(Gtk::TreeView& any_tree, const Gtk::TreePath& path,
                                 unsigned int button);
  // Returns a press of a key of GDK_KEY_*, without modifiers.
  static GdkEventKey key_press(unsigned int keyval);
  // Gives the focus to the page's tree and puts its cursor on a row. Expands the row's family.
  void put_cursor(const Gtk::TreePath& path) const;

  // Returns the tree on the page of listed species: the page's tree.
  Gtk::TreeView& tree() const;
};
