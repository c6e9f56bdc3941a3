#include "ui/plain-models.h"

#include <vector>

Glib::RefPtr<Gtk::TreeStore> plain_store(const Gtk::TreeModelColumnRecord& columns)
{
  std::vector<GType> types(columns.types(), columns.types() + columns.size());
  return Glib::wrap(gtk_tree_store_newv(static_cast<int>(types.size()), types.data()));
}

Glib::RefPtr<Gtk::TreeModelFilter> plain_filter(const Glib::RefPtr<Gtk::TreeStore>& store,
                                                const Gtk::TreeModelFilter::SlotVisible& is_visible)
{
  GtkTreeModel* const filter = gtk_tree_model_filter_new(GTK_TREE_MODEL(store->gobj()), nullptr);
  auto wrapped = Glib::wrap(GTK_TREE_MODEL_FILTER(filter));
  wrapped->set_visible_func(is_visible);
  return wrapped;
}
