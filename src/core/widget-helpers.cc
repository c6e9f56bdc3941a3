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

void break_anywhere(Gtk::Label& label)
{
  label.set_line_wrap_mode(Pango::WRAP_WORD_CHAR);
  PangoAttrList* const former = gtk_label_get_attributes(label.gobj());
  PangoAttrList* const list = former ? pango_attr_list_copy(former) : pango_attr_list_new();
  pango_attr_list_insert(list, pango_attr_insert_hyphens_new(FALSE));
  gtk_label_set_attributes(label.gobj(), list);
  pango_attr_list_unref(list);
}
