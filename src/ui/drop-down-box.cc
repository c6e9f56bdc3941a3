#include "ui/drop-down-box.h"

#include "core/displayed-text.h"
#include "core/report.h"
#include "core/text.h"

#include <gtk/gtk-a11y.h>
#include <gtkmm/cellrenderertext.h>
#include <gtkmm/menu.h>
#include <gtkmm/menuitem.h>
#include <gtkmm/togglebutton.h>

#include <algorithm>
#include <cstdio>

namespace {

// The largest width to which labels extend a box, in the width of average letters.
constexpr int most_letters = 60;

// Returns the button in a box, which has the focus in place of the box. Returns null if the
// toolkit's boxes have no such button.
Gtk::ToggleButton* inner_button(Gtk::Container& box)
{
  Gtk::ToggleButton* found = nullptr;
  box.forall([&](Gtk::Widget& child) {
    if (auto* const button = dynamic_cast<Gtk::ToggleButton*>(&child))
      found = button;
    else if (auto* const container = dynamic_cast<Gtk::Container*>(&child))
      found = found ? found : inner_button(*container);
  });
  return found;
}

// Returns the menu that a box opens. The toolkit only exposes it as an accessible object.
Gtk::Menu* menu_of(Gtk::ComboBox& box)
{
  AtkObject* const accessible = gtk_combo_box_get_popup_accessible(box.gobj());
  if (!GTK_IS_ACCESSIBLE(accessible))
    return nullptr;
  GtkWidget* const widget = gtk_accessible_get_widget(GTK_ACCESSIBLE(accessible));
  return GTK_IS_MENU(widget) ? Glib::wrap(GTK_MENU(widget)) : nullptr;
}

// Returns the letter that a key types; 0 for other keys and for shortcuts.
gunichar typed_letter(const GdkEventKey& event)
{
  const guint shortcut_keys = gtk_accelerator_get_default_mod_mask() & ~guint{GDK_SHIFT_MASK};
  const gunichar letter = gdk_keyval_to_unicode(event.keyval);
  return (event.state & shortcut_keys) == 0 && g_unichar_isprint(letter) ? letter : 0;
}

} // namespace

DropDownBox::DropDownBox(BaseObjectType* cobject, const Glib::RefPtr<Gtk::Builder>&)
    : Gtk::ComboBoxText(cobject)
{
  // Screen readers read the inner button, not the box.
  if (auto* const button = inner_button(*this)) {
    spoken = button->get_accessible();
    spoken->set_role(Atk::ROLE_COMBO_BOX);
    spoken->set_name(get_accessible()->get_name());
    button->signal_key_press_event().connect(
        sigc::mem_fun(*this, &DropDownBox::on_key_while_closed), false);
  }

  // With a wrap width, the toolkit opens a menu below the box in every theme. Without one, it
  // places the chosen row over the box, even if that hides other rows.
  if (get_wrap_width() == 0)
    set_wrap_width(1);
  menu = menu_of(*this);
  if (!menu)
    return;
  menu->get_accessible()->set_name(get_accessible()->get_name());
  menu->signal_show().connect(sigc::mem_fun(*this, &DropDownBox::on_menu_shown), false);
  menu->signal_event().connect(sigc::mem_fun(*this, &DropDownBox::on_menu_event), false);
}

void DropDownBox::init(std::initializer_list<std::pair<int, Glib::ustring>> list, int the_no_value)
{
  clear_items(the_no_value);
  items.assign(list);
  show_items();
  unset_active();
}

void DropDownBox::init(const std::vector<int>& values, const std::vector<Glib::ustring>& labels,
                       int the_no_value, unsigned int first)
{
  clear_items(the_no_value);
  const size_t count = std::min(values.size(), labels.size());
  const size_t start = std::min<size_t>(first, count);
  for (size_t i = 0; i < count; ++i) {
    const size_t source = (start + i) % count;
    if (debug_level >= 10)
      std::printf("Adding item: %d = \"%s\"\n", values[source], labels[source].c_str());
    items.emplace_back(values[source], labels[source]);
  }
  show_items();
  unset_active();
}

// Shows the rows of all items in a new store. The toolkit arranges the complete list again for
// each row that enters a store on display.
void DropDownBox::show_items()
{
  GtkListStore* const store = gtk_list_store_new(2, G_TYPE_STRING, G_TYPE_STRING); // text, id
  for (const auto& [id, label] : items)
    gtk_list_store_insert_with_values(store, nullptr, -1, get_entry_text_column(),
                                      displayed_line(label).c_str(), -1);
  set_model(Glib::wrap(GTK_TREE_MODEL(store)));
  for (const auto& [id, label] : items)
    fit_width_to(label);
}

void DropDownBox::add_item(int id, const Glib::ustring& label)
{
  items.emplace_back(id, label);
  append(displayed_line(label));
  fit_width_to(label);
}

void DropDownBox::fit_width_to(const Glib::ustring& label)
{
  if (get_wrap_width() <= 1 || label.size() > std::size_t{most_letters})
    let_text_be_cut(static_cast<int>(label.size()));
}

// Lets a narrow page truncate the text with dots instead of growing. Rows of up to
// `least_shown` letters always fit.
void DropDownBox::let_text_be_cut(int length)
{
  constexpr int least_shown = 12;
  auto* const cell = dynamic_cast<Gtk::CellRendererText*>(get_first_cell());
  if (!cell)
    return;
  cell->property_ellipsize() = Pango::ELLIPSIZE_END;
  const int shown = std::max(cell->property_width_chars().get_value(), length);
  cell->property_width_chars() = std::min(shown, least_shown);
  if (length > most_letters)
    cell->property_max_width_chars() = most_letters;
}

int DropDownBox::get_id() const
{
  const int row = get_active_row_number();
  return has_item(row) ? items[static_cast<size_t>(row)].first : no_value;
}

Glib::ustring DropDownBox::get_label() const
{
  const int row = get_active_row_number();
  if (row < 0)
    return {};
  // A box whose entries come from the definition file has rows but no items.
  return has_item(row) ? items[static_cast<size_t>(row)].second : get_active_text();
}

void DropDownBox::set_id(int id)
{
  choose_first([&](const auto& item) { return id != no_value && item.first == id; });
}

void DropDownBox::set_label(const Glib::ustring& label)
{
  choose_first([&](const auto& item) { return same_bytes(item.second, label); });
}

void DropDownBox::clear_items(int the_no_value)
{
  no_value = the_no_value;
  items.clear();
  remove_all();
}

bool DropDownBox::has_item(int row) const
{
  return row >= 0 && static_cast<size_t>(row) < items.size();
}

template<typename Matches>
void DropDownBox::choose_first(const Matches& matches)
{
  const auto found = std::find_if(items.begin(), items.end(), matches);
  if (found == items.end())
    unset_active();
  else
    set_active(static_cast<int>(found - items.begin()));
}

void DropDownBox::on_changed()
{
  Gtk::ComboBoxText::on_changed();
  if (spoken)
    spoken->set_description(get_active_text());
}

// --- typing ---

bool DropDownBox::on_key_while_closed(GdkEventKey* event)
{
  return find_typed(*event, get_active_row_number(), [this](int row) { set_active(row); });
}

// Handles keys in the signal "event", because it precedes "key-press-event". There, the toolkit's
// own handler would be called first and stop the emission.
bool DropDownBox::on_menu_event(GdkEvent* event)
{
  return event->type == GDK_KEY_PRESS && on_key_while_open(&event->key);
}

bool DropDownBox::on_key_while_open(GdkEventKey* event)
{
  const std::vector<Gtk::Widget*> rows = menu->get_children();
  const auto picked = std::find(rows.begin(), rows.end(), menu->get_selected_item());
  const bool starts_at_pick = has_moved && picked != rows.end();
  const int current =
      starts_at_pick ? static_cast<int>(picked - rows.begin()) : get_active_row_number();
  has_moved = has_moved || !event->is_modifier;
  return find_typed(*event, current, [&](int row) {
    if (auto* const item = dynamic_cast<Gtk::MenuItem*>(rows.at(static_cast<size_t>(row))))
      menu->select_item(*item);
  });
}

bool DropDownBox::find_typed(const GdkEventKey& event, int current,
                             const std::function<void(int)>& go_to)
{
  const gunichar letter = typed_letter(event);
  if (letter == 0) {
    if (!event.is_modifier)
      search.reset();
    return false;
  }
  // A blank belongs to the search only within a text. Otherwise it opens the list or chooses.
  const bool is_blank = letter == ' ';
  if (is_blank && !search.is_under_way(event.time))
    return false;
  const int row = search.type(letter, event.time, current, shown_labels());
  if (row >= 0)
    go_to(row);
  else if (is_blank)
    return false;
  else
    error_bell();
  return true;
}

std::vector<Glib::ustring> DropDownBox::shown_labels()
{
  std::vector<Glib::ustring> labels;
  for (const auto& row : get_model()->children()) {
    Glib::ustring label;
    row.get_value(get_entry_text_column(), label);
    labels.push_back(label);
  }
  return labels;
}

// --- the list ---

void DropDownBox::on_menu_shown()
{
  search.reset();
  has_moved = false;
  place_menu();
}

// Sets the offsets of the menu. The toolkit shows a menu before it places it. It places the
// menu's corner at the lower left corner of the box's child, which is inside the button, and
// then moves the menu by the two offsets.
void DropDownBox::place_menu()
{
  int left = 0;
  int top = 0;
  if (!get_child() || !get_child()->translate_coordinates(*this, 0, 0, left, top))
    return;
  const int child_bottom = top + get_child()->get_allocated_height();
  if (!opens_beside) {
    menu->set_size_request(get_allocated_width(), -1);
    menu->property_rect_anchor_dx() = -left;
    menu->property_rect_anchor_dy() = get_allocated_height() - child_bottom;
    return;
  }
  Gtk::Requisition least;
  Gtk::Requisition natural;
  menu->get_preferred_size(least, natural);
  menu->property_anchor_hints() = Gdk::ANCHOR_SLIDE | Gdk::ANCHOR_RESIZE;
  menu->property_rect_anchor_dx() = -left - natural.width;
  menu->property_rect_anchor_dy() = -child_bottom;
}

bool DropDownBox::on_scroll_event(GdkEventScroll*)
{
  return false;
}
