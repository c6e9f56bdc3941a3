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

// A combo box whose rows stand for whole numbers. Its list opens below it, as one column
// unless set_wrap_width() asks for more. Typing goes to the next row that begins with
// the typed text: in the closed box it chooses that row, in the open list it picks it.
class DropDownBox : public Gtk::ComboBoxText
{
public:
  DropDownBox(BaseObjectType* cobject, const Glib::RefPtr<Gtk::Builder>& builder);

  // Fills the box and leaves nothing chosen. The second form starts with the
  // entry at index `first`; those before it follow at the end.
  void init(std::initializer_list<std::pair<int, Glib::ustring>> list, int the_no_value);
  void init(const std::vector<int>& values, const std::vector<Glib::ustring>& labels,
            int the_no_value, unsigned int first);
  // Adds one row at the end.
  void add_item(int id, const Glib::ustring& label);

  // The chosen id, or no_value; the chosen label, or the empty text.
  int get_id() const;
  Glib::ustring get_label() const;

  // Choose the first row of that id or label; nothing if there is none. An id
  // that equals no_value also chooses nothing.
  void set_id(int id);
  void set_label(const Glib::ustring& label);

  std::vector<std::pair<int, Glib::ustring>> items; // by row
  int no_value = -1;                                // answer when nothing is chosen
  bool opens_beside = false; // the list opens at the left of the box: what is below stays visible

private:
  void clear_items(int the_no_value);
  bool has_item(int row) const;
  template<typename Matches>
  void choose_first(const Matches& matches);
  // Fits the width to one more row of that many letters.
  void let_text_be_cut(int length);

  bool on_key_while_closed(GdkEventKey* event);
  bool on_menu_event(GdkEvent* event);
  bool on_key_while_open(GdkEventKey* event);
  // Hands the row that the key finds to `go_to`; gives whether it was a key of the search.
  bool find_typed(const GdkEventKey& event, int current, const std::function<void(int)>& go_to);
  std::vector<Glib::ustring> shown_labels(); // of all rows
  void on_menu_shown();
  void place_menu();

  Gtk::Menu* menu = nullptr; // the list; the toolkit's
  TypeAhead search;
  // Whether a key has moved the pick in the open list. Before, the toolkit picks the first
  // row of a box without a choice, which is no start for a search.
  bool has_moved = false;

  Glib::RefPtr<Atk::Object> spoken; // what a screen reader meets; may be empty

protected:
  // Tells the choice to screen readers, too.
  void on_changed() override;
  // The wheel scrolls the page: turned over a box by chance it would otherwise
  // change what was chosen, unseen.
  bool on_scroll_event(GdkEventScroll* event) override;
};
