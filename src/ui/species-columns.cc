#include "ui/species-columns.h"

#include "core/report.h"
#include "ui/species-markup.h"

#include <gtkmm/treemodel.h>

#include <algorithm>
#include <cstdio>

namespace {

// These functions use the toolkit's C interface, because they run for thousands of rows
// whenever the stores are filled.

int number_in(GtkTreeModel* store, GtkTreeIter* row, const Gtk::TreeModelColumn<int>& column)
{
  GValue value = G_VALUE_INIT;
  gtk_tree_model_get_value(store, row, column.index(), &value);
  return g_value_get_int(&value);
}

// Calls `visit` for the children of a row, or for the top rows if `parent` is null, until it
// returns true. Returns whether it did.
template<typename Visit>
bool visit_rows(GtkTreeModel* store, GtkTreeIter* parent, const Visit& visit)
{
  GtkTreeIter row;
  gboolean is_row = gtk_tree_model_iter_children(store, &row, parent);
  while (is_row && !visit(&row))
    is_row = gtk_tree_model_iter_next(store, &row);
  return is_row;
}

} // namespace

SpeciesTreeColumns::SpeciesTreeColumns(SurveyWindow* the_window) : window(the_window)
{
  add(col_id);
  add(col_common);
  add(col_scientific);
  add(col_both);
  add(col_spanish);
  add(col_abundance);
  add(col_abundance_label);
  add(col_in_view);
}

SpeciesTreeColumns::~SpeciesTreeColumns() = default;

template<typename Write>
void SpeciesTreeColumns::write(const SpeciesRow& content, const Write& write_cells) const
{
  const SpeciesMarkup names = species_markup(content.id, content.common, content.scientific,
                                             content.spanish, content.rarity);
  const ShownAbundance shown = shown_abundance(content.id, content.abundance);
  write_cells(col_id.index(), content.id, col_common.index(), names.common.c_str(),
              col_scientific.index(), names.scientific.c_str(), col_both.index(),
              names.both.c_str(), col_spanish.index(), names.spanish.c_str(), col_in_view.index(),
              gboolean{content.in_view}, col_abundance_label.index(), shown.label.c_str(),
              col_abundance.index(), shown.index, -1);
}

void SpeciesTreeColumns::set(const Gtk::TreeRow& row, int id, const Glib::ustring& common,
                             const Glib::ustring& scientific, const Glib::ustring& spanish,
                             int abundance, bool in_view, int rarity)
{
  GtkTreeIter place = *row.gobj();
  write({id, common, scientific, spanish, abundance, in_view, rarity}, [&](auto... cells) {
    gtk_tree_store_set(GTK_TREE_STORE(row.get_model_gobject()), &place, cells...);
  });
}

GtkTreeIter SpeciesTreeColumns::append(const Glib::RefPtr<Gtk::TreeStore>& store,
                                       GtkTreeIter* family, const SpeciesRow& content) const
{
  GtkTreeIter row{};
  write(content, [&](auto... cells) {
    gtk_tree_store_insert_with_values(store->gobj(), &row, family, -1, cells...);
  });
  return row;
}

SpeciesTreeColumns::ShownAbundance SpeciesTreeColumns::shown_abundance(int id, int abundance) const
{
  const bool has_label = abundance >= 0 && choices && !choices->empty();
  const int index =
      has_label ? std::min(abundance, static_cast<int>(choices->size()) - 1) : abundance;
  const Glib::ustring& label =
      has_label ? (*choices)[static_cast<std::size_t>(index)].label : no_label;
  if (debug_level >= 5)
    printf("set_abundance(): species id %d = %d (%s)\n", id, index, label.c_str());
  return {index, label};
}

void SpeciesTreeColumns::set_abundance(const Gtk::TreeRow& row, int abundance)
{
  const ShownAbundance shown = shown_abundance(row.get_value(col_id), abundance);
  row[col_abundance_label] = shown.label;
  row[col_abundance] = shown.index;
}

bool SpeciesTreeColumns::is_marked(GtkTreeModel* store, GtkTreeIter* species, bool in_view) const
{
  if (number_in(store, species, col_abundance) == 0)
    return false;
  gboolean is_in_view = FALSE;
  gtk_tree_model_get(store, species, col_in_view.index(), &is_in_view, -1);
  return (is_in_view != FALSE) == in_view;
}

bool SpeciesTreeColumns::has_mark(const Gtk::TreeIter& row, bool in_view) const
{
  GtkTreeModel* const store = row.get_model_gobject();
  GtkTreeIter asked = *row.gobj();
  if (number_in(store, &asked, col_id) >= 0)
    return is_marked(store, &asked, in_view);
  return visit_rows(store, &asked,
                    [&](GtkTreeIter* species) { return is_marked(store, species, in_view); });
}

std::vector<int> SpeciesTreeColumns::marked_species(const Glib::RefPtr<Gtk::TreeStore>& store,
                                                    bool in_view) const
{
  GtkTreeModel* const model = GTK_TREE_MODEL(store->gobj());
  std::vector<int> ids;
  const auto take = [&](GtkTreeIter* species) {
    if (is_marked(model, species, in_view))
      ids.push_back(number_in(model, species, col_id));
    return false;
  };
  visit_rows(model, nullptr, [&](GtkTreeIter* family) { return visit_rows(model, family, take); });
  return ids;
}
