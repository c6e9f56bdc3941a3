#include "ui/search-field.h"

namespace {

// Shows the button if the field has a text, or else hides it.
void show_clear_button(Gtk::Entry& field)
{
  if (field.get_text_length() == 0)
    return field.unset_icon(Gtk::ENTRY_ICON_SECONDARY);
  field.set_icon_from_icon_name("edit-clear-symbolic", Gtk::ENTRY_ICON_SECONDARY);
  field.set_icon_tooltip_text("Clear the search (Escape)", Gtk::ENTRY_ICON_SECONDARY);
}

bool clear(Gtk::Entry& field)
{
  const bool had_text = field.get_text_length() != 0;
  field.set_text("");
  return had_text;
}

bool handle_key(const GdkEventKey* event, Gtk::Entry& field,
                const std::function<void()>& go_to_results)
{
  switch (event->keyval) {
  case GDK_KEY_Escape:
    return clear(field);
  case GDK_KEY_Return:
  case GDK_KEY_KP_Enter:
  case GDK_KEY_Down:
  case GDK_KEY_KP_Down:
    go_to_results();
    return true; // without results, the focus stays here
  default:
    return false;
  }
}

} // namespace

void prepare_search_field(Gtk::Entry& field, const std::function<void()>& go_to_results)
{
  field.signal_changed().connect([&field] { show_clear_button(field); });
  field.signal_icon_press().connect([&field](Gtk::EntryIconPosition icon, const GdkEventButton*) {
    if (icon == Gtk::ENTRY_ICON_SECONDARY)
      clear(field);
  });
  field.signal_key_press_event().connect(
      [&field, go_to_results](GdkEventKey* event) {
        return handle_key(event, field, go_to_results);
      },
      false);
}
