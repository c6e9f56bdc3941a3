#include "ui/species-columns.h"

#include "core/report.h"
#include "ui/species-markup.h"

#include <gtkmm/treemodel.h>

#include <algorithm>
#include <cstdio>

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

void SpeciesTreeColumns::set(const Gtk::TreeRow& row, int id, const Glib::ustring& common,
                             const Glib::ustring& scientific, const Glib::ustring& spanish,
                             int abundance, bool in_view, int rarity)
{
  const SpeciesMarkup names = species_markup(id, common, scientific, spanish, rarity);
  row[col_id] = id;
  row[col_common] = names.common;
  row[col_scientific] = names.scientific;
  row[col_both] = names.both;
  row[col_spanish] = names.spanish;
  row[col_in_view] = in_view;
  set_abundance(row, abundance);
}

void SpeciesTreeColumns::set_abundance(const Gtk::TreeRow& row, int abundance)
{
  const bool has_label = abundance >= 0 && choices && !choices->empty();
  const int shown =
      has_label ? std::min(abundance, static_cast<int>(choices->size()) - 1) : abundance;
  const Glib::ustring& label =
      has_label ? (*choices)[static_cast<std::size_t>(shown)].label : no_label;

  row[col_abundance_label] = label;
  if (debug_level >= 5)
    printf("set_abundance(): species id %d = %d (%s)\n", row.get_value(col_id), shown,
           label.c_str());
  row[col_abundance] = shown;
}
