#include "core/message-dialog.h"

#include "core/markup.h"
#include "core/my-app.h"

#include <gdkmm/pixbuf.h>
#include <gtkmm/window.h>

namespace {

// The window that the user works in: the active one, else any that is shown.
Gtk::Window* window_in_use()
{
  Gtk::Window* shown = nullptr;
  for (auto* window : Gtk::Window::list_toplevels()) {
    if (!window->get_visible() || window->get_window_type() != Gtk::WINDOW_TOPLEVEL)
      continue;
    if (window->is_active())
      return window;
    shown = window;
  }
  return shown;
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
  Gtk::Window* const parent = window_in_use();
  const Glib::ustring text =
      message.text_is_markup ? readable_markup(message.text) : escape_markup(message.text);
  Gtk::MessageDialog dialog(text, true, message.type, message.standard_buttons, message.modal);
  if (parent)
    dialog.set_transient_for(*parent);
  for (const auto& button : message.buttons)
    dialog.add_button(button.label, button.response);
  dialog.set_title(message.title);
  const auto icons = usable_icons();
  if (!icons.empty())
    dialog.set_icon_list(icons);
  return dialog.run();
}
