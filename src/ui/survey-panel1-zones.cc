// The part of the panel that finds and names the survey's zone.

#include "core/displayed-text.h"
#include "core/number.h"
#include "core/report.h"
#include "core/text.h"
#include "core/widget-helpers.h"
#include "data/region-fish-info.h"
#include "data/zone-code.h"
#include "ui/displayed-cell.h"
#include "ui/plain-models.h"
#include "ui/search-field.h"
#include "ui/survey-panel1.h"
#include "ui/survey-window.h"
#include "ui/tree-rows.h"
#include "ui/zone-tree.h"

#include <cstdio>
#include <string>

void SurveyPanel1::prepare_zone_tree()
{
  geog_store = plain_store(geog_columns);
  geog_tree->set_model(geog_store);
  geog_tree->append_column("Geographic Zone", geog_columns.col_label);
  geog_selection = geog_tree->get_selection();

  // With a fixed height, the toolkit does not measure each row. That would take seconds.
  auto* column = geog_tree->get_column(0);
  column->set_sizing(Gtk::TREE_VIEW_COLUMN_FIXED);
  geog_tree->set_fixed_height_mode(true);
  auto* cell = dynamic_cast<Gtk::CellRendererText*>(column->get_first_cell());
  cell->property_ellipsize() = Pango::ELLIPSIZE_END;
  limit_displayed(*column, *cell);

  // Collapsing a row moves a cursor that is below it to that row.
  geog_tree->signal_test_collapse_row().connect([this](const Gtk::TreeIter&, const Gtk::TreePath&) {
    folding = true;
    return false; // allow the row to collapse
  });
  geog_tree->signal_row_collapsed().connect(
      [this](const Gtk::TreeIter&, const Gtk::TreePath&) { folding = false; });
  geog_tree->signal_cursor_changed().connect(sigc::mem_fun(*this, &SurveyPanel1::on_geog_clicked));
  prepare_search_field(*zone_search, [this] { go_to_first_zone(); });
}

void SurveyPanel1::on_zone_search_changed()
{
  if (window->survey.region_fish)
    rebuild_zone_tree();
}

void SurveyPanel1::rebuild_zone_tree()
{
  std::vector<ZoneRow> rows;
  if (window->survey.region_fish)
    rows = zones.rows(zone_search->get_text());

  // A detached store fills many times faster. It also does not move the cursor from row to row,
  // which would count as clicks.
  const int search_column = geog_tree->get_search_column(); // unset_model() resets it
  geog_tree->unset_model();
  geog_store->clear();
  geog_columns.fill(geog_store, rows);
  geog_tree->set_model(geog_store);
  geog_tree->set_search_column(search_column);
  if (is_searching_zones())
    geog_tree->expand_all(); // all rows with children contain a match
  show_or_hide(no_geog_matches, rows.empty());
}

bool SurveyPanel1::is_searching_zones() const
{
  return !trim_ws(zone_search->get_text()).empty();
}

// Selects the first row whose name matches. Skips ancestors that do not match.
void SurveyPanel1::go_to_first_zone()
{
  const auto wanted = trim_ws(zone_search->get_text().lowercase());
  Gtk::TreePath first;
  geog_store->foreach ([&](const Gtk::TreePath& path, const Gtk::TreeIter& row) {
    const Glib::ustring name = row->get_value(geog_columns.col_name).lowercase();
    if (contains(name, wanted))
      first = path;
    return !first.empty();
  });
  if (first.empty())
    return;
  geog_tree->set_cursor(first); // first, because grab_focus() would set another one
  geog_tree->grab_focus();
}

void SurveyPanel1::on_geog_clicked()
{
  Gtk::TreePath path;
  Gtk::TreeViewColumn* column = nullptr;
  geog_tree->get_cursor(path, column);
  if (path.empty() || folding)
    return;
  const auto row = geog_store->get_iter(path);
  if (!row)
    return;

  const int id = row->get_value(geog_columns.col_id);
  if (debug_level >= 30)
    std::printf("geog clicked: id %d: %s\n", id, row->get_value(geog_columns.col_name).c_str());
  if (!is_complete_zone(id)) {
    if (!(is_searching_zones() && comes_from_keyboard())) // keys keep results expanded
      toggle_row(*geog_tree, path);
  } else if (!window->survey.is_uploaded) {
    zonecode->set_text(std::to_string(id));
  }
}

void SurveyPanel1::on_zonecode_changed()
{
  if (suppressed("on_zonecode_changed"))
    return;
  const Glib::ustring code = get_zonecode();
  const RegionFishInfo* fish = window->survey.region_fish;
  if (!fish || code.empty()) {
    show_zone("", "", "");
    return;
  }
  if (fish->geog_names.count(to_int(code)) == 0) {
    zone_complete = false;
    show_zone("Zone Unknown  ", "", "");
    return;
  }
  zone_complete = is_complete_zone(code);
  const Glib::ustring name = full_zone_name(code, fish->geog_names);
  if (zone_complete)
    show_zone("Zone Name: ", name, name);
  else
    show_zone("Partial Zone: ", name, "Partial Zone: " + name);
}

void SurveyPanel1::show_zone(const Glib::ustring& status, const Glib::ustring& name,
                             const Glib::ustring& site)
{
  zone_name_status->set_text(status);
  zone_name->set_text(displayed_text(name));
  site_text = site;
  window->set_title_string();
}
