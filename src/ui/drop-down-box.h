#pragma once

#include "ui/type-ahead.h"

#include <atkmm/object.h>
#include <glibmm/ustring.h>
#include <gtkmm/builder.h>
#include <gtkmm/comboboxtext.h>

#include <functional>
#include <initializer_list>
#include <utility>
#include <vector>

namespace Gtk {
class Menu;
}

// A combo box whose rows have whole numbers as ids. Its list opens below it, as one column or
// as a grid with set_wrap_width() columns. Typing finds the next row that begins with the
// typed text. In the closed box this chooses the row, in the open list it selects the row.
class DropDownBox : public Gtk::ComboBoxText
{
public:
  DropDownBox(BaseObjectType* cobject, const Glib::RefPtr<Gtk::Builder>& builder);

  // Replaces all rows and chooses none. The second form starts with the entry at index
  // `first`; the entries before it follow at the end.
  void init(std::initializer_list<std::pair<int, Glib::ustring>> list, int the_no_value);
  void init(const std::vector<int>& values, const std::vector<Glib::ustring>& labels,
            int the_no_value, unsigned int first);
  // Adds one row at the end.
  void add_item(int id, const Glib::ustring& label);

  // Return the id and the label of the chosen row. If no row is chosen, return no_value and an
  // empty text.
  int get_id() const;
  Glib::ustring get_label() const;

  // Choose the first row with that id or label, or no row if there is none. no_value also
  // chooses no row.
  void set_id(int id);
  void set_label(const Glib::ustring& label);

  std::vector<std::pair<int, Glib::ustring>> items; // by row
  int no_value = -1;                                // the id while nothing is chosen
  // Whether the list opens to the left of the box, so that it does not cover what is below.
  bool opens_beside = false;

private:
  void clear_items(int the_no_value);
  void show_items();
  bool has_item(int row) const;
  template<typename Matches>
  void choose_first(const Matches& matches);
  // Adapt the width to one more row.
  void fit_width_to(const Glib::ustring& label);
  void let_text_be_cut(int length);

  bool on_key_while_closed(GdkEventKey* event);
  bool on_menu_event(GdkEvent* event);
  bool on_key_while_open(GdkEventKey* event);
  // Calls `go_to` with the row that the key finds. Returns whether the key belongs to the search.
  bool find_typed(const GdkEventKey& event, int current, const std::function<void(int)>& go_to);
  std::vector<Glib::ustring> shown_labels(); // of all rows
  void on_menu_shown();
  void place_menu();

  Gtk::Menu* menu = nullptr; // the list; owned by the toolkit
  TypeAhead search;
  // Whether the user has pressed a key, other than a modifier, since the list opened. Before
  // that, the toolkit selects the first row of a box without a choice, and a search must not
  // start from there.
  bool has_moved = false;

  Glib::RefPtr<Atk::Object> spoken; // the object that screen readers read; may be empty

protected:
  // Also reports the choice to screen readers.
  void on_changed() override;
  // Lets the wheel scroll the page. Otherwise it would change the choice unnoticed when the
  // pointer is over a box by chance.
  bool on_scroll_event(GdkEventScroll* event) override;
};
