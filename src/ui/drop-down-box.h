#pragma once

#include <atkmm/object.h>
#include <glibmm/ustring.h>
#include <gtkmm/builder.h>
#include <gtkmm/comboboxtext.h>

#include <initializer_list>
#include <utility>
#include <vector>

// A combo box whose rows stand for whole numbers.
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

private:
  void clear_items(int the_no_value);
  bool has_item(int row) const;
  template<typename Matches>
  void choose_first(const Matches& matches);

  Glib::RefPtr<Atk::Object> spoken; // what a screen reader meets; may be empty

protected:
  // Tells the choice to screen readers, too.
  void on_changed() override;
  // The wheel scrolls the page: turned over a box by chance it would otherwise
  // change what was chosen, unseen.
  bool on_scroll_event(GdkEventScroll* event) override;
};
