#include "core/message-dialog.h"

#include "core/displayed-text.h"
#include "core/long-text.h"
#include "core/markup.h"
#include "core/my-app.h"
#include "core/widget-helpers.h"

#include <gdk/gdk.h>
#include <gdkmm/pixbuf.h>
#include <gtkmm/box.h>
#include <gtkmm/buttonbox.h>
#include <gtkmm/label.h>
#include <gtkmm/scrolledwindow.h>
#include <gtkmm/window.h>

#include <algorithm>

namespace {

// The largest displayed text in bytes. A longer text is shortened, because the toolkit takes
// minutes to show megabytes.
constexpr std::size_t longest_text = 2 * longest_part;
// The largest text in bytes that is parsed as markup.
constexpr std::size_t longest_markup = 50 * longest_text;
// A text with more lines or a longer word gets scroll bars, so that the buttons remain on the
// screen.
constexpr std::size_t most_lines = 16;
constexpr std::size_t line_length = 70; // bytes
constexpr std::size_t longest_word = 150;
constexpr int scrolled_height = 300; // pixels
constexpr int least_scrolled_height = 80;
// The limits of the width of the text in characters.
constexpr int widest_line = 60;
constexpr int narrowest_line = 20;

// Returns the window that the user works in: the newest modal window, which blocks all
// others, or the active window, or the newest window. Null if no window is visible.
Gtk::Window* window_in_use()
{
  Gtk::Window* modal = nullptr;
  Gtk::Window* active = nullptr;
  Gtk::Window* shown = nullptr;
  for (auto* window : Gtk::Window::list_toplevels()) { // the oldest first
    if (!window->get_visible() || window->get_window_type() != Gtk::WINDOW_TOPLEVEL)
      continue;
    shown = window;
    if (window->get_modal())
      modal = window;
    if (window->is_active())
      active = window;
  }
  if (modal)
    return modal;
  return active ? active : shown;
}

Glib::ustring shown_text(const Message& message)
{
  const bool is_markup = message.text_is_markup && message.text.bytes() <= longest_markup &&
                         is_label_markup(message.text);
  if (is_markup)
    return displayed_markup(shorten_markup(message.text, longest_text), Glib::ustring::npos);
  return escape_markup(shorten_text(message.text.raw(), longest_text));
}

// Returns whether a dialog with the complete text could be larger than the screen.
bool is_large(const std::string& text)
{
  std::size_t lines = 1;
  std::size_t in_line = 0;
  std::size_t in_word = 0;
  for (const char c : text) {
    in_word = c == ' ' || c == '\n' ? 0 : in_word + 1;
    if (in_word > longest_word)
      return true;
    in_line = c == '\n' || in_line == line_length ? 0 : in_line + 1;
    lines += in_line == 0;
  }
  return lines > most_lines;
}

// Splits the text into short runs for Pango. Pango lays out the rest of a run again for each
// line that it breaks off, so its time grows with the square of the length. An attribute on
// every other piece ends the run and changes nothing else.
void lay_out_in_pieces(Gtk::Label& label)
{
  constexpr std::size_t piece = 100; // characters
  const std::string text = label.get_text();
  const auto behind = [&](std::size_t at) {
    const char* end = text.c_str() + at;
    for (std::size_t i = 0; i < piece && *end; ++i)
      end = g_utf8_next_char(end);
    return static_cast<std::size_t>(end - text.c_str());
  };
  Pango::AttrList attributes;
  for (std::size_t at = 0; at < text.size(); at = behind(behind(at))) {
    auto end_of_run = Pango::Attribute::create_attr_fallback(true);
    end_of_run.set_start_index(static_cast<unsigned int>(at));
    end_of_run.set_end_index(static_cast<unsigned int>(behind(at)));
    attributes.insert(end_of_run);
  }
  label.set_attributes(attributes);
}

// Allows a break in any word, so that no word makes the dialog too wide.
void prepare_label(Gtk::Widget& widget)
{
  auto* const label = dynamic_cast<Gtk::Label*>(&widget);
  if (!label)
    return;
  lay_out_in_pieces(*label);
  break_anywhere(*label);
}

Size least_size(const Gtk::Widget& widget)
{
  Gtk::Requisition least;
  Gtk::Requisition natural;
  widget.get_preferred_size(least, natural);
  return {least.width, least.height};
}

Size natural_size(const Gtk::Widget& widget)
{
  Gtk::Requisition least;
  Gtk::Requisition natural;
  widget.get_preferred_size(least, natural);
  return {natural.width, natural.height};
}

// Returns the width of a text with scroll bars in pixels: that of the widest line, but at most
// four fifths of the room.
int scrolled_width(Gtk::Widget& dialog, const Size& room)
{
  int width = 0;
  int height = 0;
  dialog.create_pango_layout(Glib::ustring(widest_line, 'n'))->get_pixel_size(width, height);
  return std::min(width, room.width * 4 / 5);
}

// Gives the focus to the first button. Otherwise, the scrolled text has it, and Return does not
// activate a button.
void focus_first_button(Gtk::MessageDialog& dialog)
{
  const auto buttons = dialog.get_action_area()->get_children();
  if (!buttons.empty())
    buttons.front()->grab_focus();
}

// Adds scroll bars to the dialog's text, which gets the remaining room.
void make_scrollable(Gtk::MessageDialog& dialog, const Size& room)
{
  Gtk::Box* const area = dialog.get_message_area();
  auto* const texts = Gtk::make_managed<Gtk::Box>(Gtk::ORIENTATION_VERTICAL);
  texts->set_margin_end(6); // pixels between the letters and the scroll bar
  for (auto* label : area->get_children())
    label->reparent(*texts);
  auto* const scrolled = Gtk::make_managed<Gtk::ScrolledWindow>();
  area->pack_start(*scrolled);
  texts->show();
  scrolled->show();
  scrolled->set_overlay_scrolling(false); // the bar shows that there is more to read
  scrolled->set_min_content_width(scrolled_width(dialog, room));
  scrolled->set_min_content_height(least_scrolled_height);
  // Measure the dialog before it has the text, because measuring the text is slow.
  const int left = room.height - least_size(dialog).height;
  scrolled->add(*texts);
  scrolled->set_min_content_height(
      std::clamp(least_scrolled_height + left, least_scrolled_height, scrolled_height));
  focus_first_button(dialog);
}

// Makes the dialog fit on a small screen with large letters: stacks buttons that do not fit side
// by side, makes lines shorter, and adds scroll bars to a text that is still too tall.
void fit_to_screen(Gtk::MessageDialog& dialog, const Size& room, bool needs_scrolling)
{
  if (least_size(*dialog.get_action_area()).width > room.width)
    dialog.get_action_area()->set_orientation(Gtk::ORIENTATION_VERTICAL);
  if (needs_scrolling)
    return make_scrollable(dialog, room);
  for (int characters = widest_line;
       characters >= narrowest_line && natural_size(dialog).width > room.width; characters -= 5) {
    dialog.get_message_area()->foreach ([characters](Gtk::Widget& widget) {
      if (auto* const label = dynamic_cast<Gtk::Label*>(&widget))
        label->set_max_width_chars(characters);
    });
  }
  if (natural_size(dialog).height > room.height)
    make_scrollable(dialog, room);
}

} // namespace

std::vector<Glib::RefPtr<Gdk::Pixbuf>> usable_icons()
{
  std::vector<Glib::RefPtr<Gdk::Pixbuf>> icons;
  for (const auto& icon : MyApp::icon_list)
    if (icon)
      icons.push_back(icon);
  return icons;
}

int run_message(const Message& message)
{
  if (!gdk_display_get_default())
    return Gtk::RESPONSE_NONE;
  Gtk::Window* const parent = window_in_use();
  const Glib::ustring text = shown_text(message);
  Gtk::MessageDialog dialog(text, true, message.type, message.standard_buttons, message.modal);
  dialog.get_message_area()->foreach (sigc::ptr_fun(prepare_label));
  if (parent)
    dialog.set_transient_for(*parent);
  for (const auto& button : message.buttons)
    dialog.add_button(button.label, button.response);
  fit_to_screen(dialog, room_on_screen(parent), is_large(text.raw()));
  dialog.set_title(displayed_line(message.title));
  const auto icons = usable_icons();
  if (!icons.empty())
    dialog.set_icon_list(icons);
  return dialog.run();
}
