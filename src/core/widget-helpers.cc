#include "core/widget-helpers.h"

#include <gdkmm/display.h>
#include <gdkmm/monitor.h>
#include <gtkmm/label.h>
#include <gtkmm/window.h>

Gtk::Label* make_filler()
{
  return Gtk::manage(new Gtk::Label);
}

void show_or_hide(Gtk::Widget* widget, bool show)
{
  if (show)
    widget->show();
  else
    widget->hide();
}

void break_anywhere(Gtk::Label& label)
{
  label.set_line_wrap_mode(Pango::WRAP_WORD_CHAR);
  PangoAttrList* const former = gtk_label_get_attributes(label.gobj());
  PangoAttrList* const list = former ? pango_attr_list_copy(former) : pango_attr_list_new();
  pango_attr_list_insert(list, pango_attr_insert_hyphens_new(FALSE));
  gtk_label_set_attributes(label.gobj(), list);
  pango_attr_list_unref(list);
}

Size room_on_screen(Gtk::Window* parent)
{
  constexpr int frame_width = 20;
  constexpr int frame_height = 60;
  const auto display = Gdk::Display::get_default();
  const bool has_place = parent && parent->get_window();
  const auto monitor =
      has_place ? display->get_monitor_at_window(parent->get_window()) : display->get_monitor(0);
  Gdk::Rectangle area;
  monitor->get_workarea(area);
  return {area.get_width() - frame_width, area.get_height() - frame_height};
}
