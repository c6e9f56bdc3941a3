#include "core/late-keys.h"

#include <gtk/gtk.h>

namespace {

// Returns the widget that receives an event, or null if there is none.
GtkWidget* receiver(const GdkEvent& event)
{
  gpointer widget = nullptr;
  if (event.any.window)
    gdk_window_get_user_data(event.any.window, &widget);
  return GTK_IS_WIDGET(widget) ? GTK_WIDGET(widget) : nullptr;
}

// Returns the menu in this pop-up window if the menu is closed, else null.
GtkMenu* closed_menu(GtkWidget* widget)
{
  GtkWidget* const popup = widget ? gtk_widget_get_toplevel(widget) : nullptr;
  if (!GTK_IS_WINDOW(popup) || gtk_widget_get_visible(popup))
    return nullptr;
  GtkWidget* const menu = gtk_bin_get_child(GTK_BIN(popup));
  return GTK_IS_MENU(menu) ? GTK_MENU(menu) : nullptr;
}

// Returns the visible window to which the menu belongs, or null if there is none.
GdkWindow* owner_of(GtkMenu* menu)
{
  GtkWidget* const widget = gtk_menu_get_attach_widget(menu);
  GtkWidget* const owner = widget ? gtk_widget_get_toplevel(widget) : nullptr;
  const bool is_shown = GTK_IS_WINDOW(owner) && gtk_widget_get_mapped(owner);
  return is_shown ? gtk_widget_get_window(owner) : nullptr;
}

// Returns whether the event reports the end of an earlier grab by a window that has a new grab.
// The toolkit reports it late if the display is slow, and it would close a menu that has opened
// again.
bool is_about_earlier_grab(GdkEvent* event)
{
  if (event->type != GDK_GRAB_BROKEN || event->grab_broken.grab_window)
    return false;
  GdkDevice* const device = gdk_event_get_device(event);
  return device && gdk_display_device_is_grabbed(gdk_device_get_display(device), device);
}

void handle(GdkEvent* event, gpointer)
{
  if (is_about_earlier_grab(event))
    return;
  if (event->type == GDK_KEY_PRESS || event->type == GDK_KEY_RELEASE) {
    GtkMenu* const menu = closed_menu(receiver(*event));
    if (GdkWindow* const owner = menu ? owner_of(menu) : nullptr) {
      g_object_unref(event->key.window);
      event->key.window = GDK_WINDOW(g_object_ref(owner));
    }
  }
  gtk_main_do_event(event);
}

} // namespace

void forward_late_keys()
{
  gdk_event_handler_set(handle, nullptr, nullptr);
}
