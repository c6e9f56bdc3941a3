#include "core/widget-helpers.h"

#include <gtkmm/label.h>

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
