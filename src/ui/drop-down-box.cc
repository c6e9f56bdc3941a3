#include "ui/drop-down-box.h"

#include "core/report.h"

#include <gtkmm/togglebutton.h>

#include <algorithm>
#include <cstdio>

namespace {

// The button inside of a box, which takes the keyboard in its place; null if the
// toolkit builds its boxes otherwise.
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

} // namespace

DropDownBox::DropDownBox(BaseObjectType* cobject, const Glib::RefPtr<Gtk::Builder>&)
    : Gtk::ComboBoxText(cobject)
{
  // Who listens to a screen reader meets the inner button, not the box.
  if (auto* const button = inner_button(*this)) {
    spoken = button->get_accessible();
    spoken->set_role(Atk::ROLE_COMBO_BOX);
    spoken->set_name(get_accessible()->get_name());
  }
}

void DropDownBox::init(std::initializer_list<std::pair<int, Glib::ustring>> list, int the_no_value)
{
  clear_items(the_no_value);
  for (const auto& [id, label] : list)
    add_item(id, label);
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
    add_item(values[source], labels[source]);
  }
  unset_active();
}

void DropDownBox::add_item(int id, const Glib::ustring& label)
{
  items.emplace_back(id, label);
  append(label);
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
  // A box whose entries stand in the definition file has rows but no items.
  return has_item(row) ? items[static_cast<size_t>(row)].second : get_active_text();
}

void DropDownBox::set_id(int id)
{
  choose_first([&](const auto& item) { return id != no_value && item.first == id; });
}

void DropDownBox::set_label(const Glib::ustring& label)
{
  // Bytes: a locale may collate different names as equal.
  choose_first([&](const auto& item) { return item.second.raw() == label.raw(); });
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

bool DropDownBox::on_scroll_event(GdkEventScroll*)
{
  return false;
}
