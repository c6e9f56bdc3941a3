#include "ui/confirm-panel.h"

#include "core/report.h"
#include "core/widget-helpers.h"
#include "ui/listed-panel.h"
#include "ui/plain-models.h"
#include "ui/rarity-notes.h"
#include "ui/reading-order.h"
#include "ui/survey-window.h"

#include <gtkmm/scrolledwindow.h>

#include <cstdio>
#include <string>

namespace {

// Requests the width of a table with shortened names, for any text size. The two tables are side
// by side if there is enough room.
void request_width(Gtk::TreeView& tree, SpeciesTreeParts& parts)
{
  int names = 0;
  int natural = 0;
  parts.name_cell.get_preferred_width(tree, names, natural);
  const auto* const last = tree.get_column(static_cast<int>(tree.get_n_columns()) - 1);
  auto& frame = dynamic_cast<Gtk::ScrolledWindow&>(*tree.get_parent());
  frame.set_min_content_width(parts.id_column.get_min_width() + names + last->get_min_width());
}

// The action of Return on a row that a search has found. Does nothing, because the cursor is
// already there.
void stay_on_found_row(const Gtk::TreePath&, guint32) {}

} // namespace

ConfirmPanel::ConfirmPanel(BaseObjectType* cobject, const Glib::RefPtr<Gtk::Builder>&)
    : Gtk::Grid(cobject)
{
}

void ConfirmPanel::ctor_continued(const Glib::RefPtr<Gtk::Builder>& builder,
                                  SurveyWindow* the_window)
{
  window = the_window;
  my_app = window->my_app;
  find_labels(builder);
  builder->get_widget("confirm_verdict", confirm_verdict);
  builder->get_widget("confirm_bottom_time", confirm_bottom_time);
  builder->get_widget("conf_listed_box", conf_listed_box);
  builder->get_widget("conf_listed_tree", conf_listed_tree);
  builder->get_widget("conf_unlisted_box", conf_unlisted_box);
  builder->get_widget("conf_unlisted_tree", conf_unlisted_tree);
  confirm_bottom_time->signal_toggled().connect(sigc::mem_fun(*this, &ConfirmPanel::refresh));
  confirm_verdict->signal_clicked().connect(
      sigc::mem_fun(*this, &ConfirmPanel::on_verdict_clicked));
  read_in_visual_order(*this);
  conf_listed_box->hide();
  conf_unlisted_box->hide();
  connect_trees();
  attach_models();
  update_columns();
}

void ConfirmPanel::find_labels(const Glib::RefPtr<Gtk::Builder>& builder)
{
  using LabelMember = Gtk::Label* ConfirmPanel::*;
  static constexpr struct {
    const char* id;
    LabelMember label;
  } labels[] = {
      {"confirm_instructions", &ConfirmPanel::confirm_instructions},
      {"conf_label_member_id", &ConfirmPanel::conf_label_member_id},
      {"conf_member_id", &ConfirmPanel::conf_member_id},
      {"conf_label_last_name", &ConfirmPanel::conf_label_last_name},
      {"conf_last_name", &ConfirmPanel::conf_last_name},
      {"conf_label_survey_type", &ConfirmPanel::conf_label_survey_type},
      {"conf_survey_type", &ConfirmPanel::conf_survey_type},
      {"conf_label_survey_date", &ConfirmPanel::conf_label_survey_date},
      {"conf_survey_date", &ConfirmPanel::conf_survey_date},
      {"conf_label_dive_start", &ConfirmPanel::conf_label_dive_start},
      {"conf_dive_start", &ConfirmPanel::conf_dive_start},
      {"conf_label_zone_code", &ConfirmPanel::conf_label_zone_code},
      {"conf_zone_code", &ConfirmPanel::conf_zone_code},
      {"conf_zone_name", &ConfirmPanel::conf_zone_name},
      {"conf_label_surface_temp", &ConfirmPanel::conf_label_surface_temp},
      {"conf_surface_temp", &ConfirmPanel::conf_surface_temp},
      {"conf_label_bottom_temp", &ConfirmPanel::conf_label_bottom_temp},
      {"conf_bottom_temp", &ConfirmPanel::conf_bottom_temp},
      {"conf_label_bottom_time", &ConfirmPanel::conf_label_bottom_time},
      {"conf_bottom_time", &ConfirmPanel::conf_bottom_time},
      {"conf_label_visibility", &ConfirmPanel::conf_label_visibility},
      {"conf_visibility", &ConfirmPanel::conf_visibility},
      {"conf_label_avg_depth", &ConfirmPanel::conf_label_avg_depth},
      {"conf_avg_depth", &ConfirmPanel::conf_avg_depth},
      {"conf_label_max_depth", &ConfirmPanel::conf_label_max_depth},
      {"conf_max_depth", &ConfirmPanel::conf_max_depth},
      {"conf_label_current", &ConfirmPanel::conf_label_current},
      {"conf_current", &ConfirmPanel::conf_current},
      {"conf_label_habitat", &ConfirmPanel::conf_label_habitat},
      {"conf_habitat", &ConfirmPanel::conf_habitat},
      {"conf_label_total_species", &ConfirmPanel::conf_label_total_species},
      {"conf_total_species", &ConfirmPanel::conf_total_species},
      {"conf_listed_species", &ConfirmPanel::conf_listed_species},
      {"conf_unlisted_species", &ConfirmPanel::conf_unlisted_species},
  };
  for (const auto& row : labels) {
    builder->get_widget(row.id, this->*row.label);
    if ((this->*row.label)->get_line_wrap())
      break_anywhere(*(this->*row.label));
  }
}

void ConfirmPanel::connect_trees()
{
  conf_listed_tree->signal_cursor_changed().connect(
      sigc::mem_fun(*this, &ConfirmPanel::on_listed_clicked));
  listed_selection = conf_listed_tree->get_selection();
  prepare_species_tree(*conf_listed_tree, listed_parts,
                       sigc::mem_fun(*this, &ConfirmPanel::listed_render_id), stay_on_found_row);
  explain_rarity(*window, *conf_listed_tree);

  conf_unlisted_tree->signal_cursor_changed().connect(
      sigc::mem_fun(*this, &ConfirmPanel::on_unlisted_clicked));
  unlisted_selection = conf_unlisted_tree->get_selection();
  prepare_species_tree(*conf_unlisted_tree, unlisted_parts,
                       sigc::mem_fun(*this, &ConfirmPanel::unlisted_render_id), stay_on_found_row);
  explain_rarity(*window, *conf_unlisted_tree);
}

void ConfirmPanel::detach_models()
{
  conf_listed_tree->unset_model();
  conf_unlisted_tree->unset_model();
  listed_filter.reset();
  unlisted_filter.reset();
}

void ConfirmPanel::attach_models()
{
  listed_filter =
      plain_filter(window->listed_model, sigc::mem_fun(*this, &ConfirmPanel::listed_check_visible));
  conf_listed_tree->set_model(listed_filter);
  unlisted_filter = plain_filter(window->unlisted_model,
                                 sigc::mem_fun(*this, &ConfirmPanel::unlisted_check_visible));
  conf_unlisted_tree->set_model(unlisted_filter);
}

void ConfirmPanel::update_columns()
{
  const NameDisplay names = window->listed_panel->store_name_display();
  const auto& columns = window->species_columns;
  set_species_tree_columns(*conf_listed_tree, listed_parts, columns, names, "Number seen");
  set_species_tree_columns(*conf_unlisted_tree, unlisted_parts, columns, names, "Number seen");
  request_width(*conf_listed_tree, listed_parts);
  request_width(*conf_unlisted_tree, unlisted_parts);
  conf_listed_tree->expand_all();
  conf_unlisted_tree->expand_all();
}

void ConfirmPanel::show_summaries()
{
  conf_listed_tree->remove_all_columns();
  conf_unlisted_tree->remove_all_columns();

  listed_filter->refilter();
  conf_listed_tree->expand_all();
  conf_listed_species->set_text("Listed Species: " + std::to_string(num_listed));
  show_or_hide(conf_listed_box, num_listed >= 1);

  unlisted_filter->refilter();
  conf_unlisted_tree->expand_all();
  conf_unlisted_species->set_text("Unlisted Species: " + std::to_string(num_unlisted));
  show_or_hide(conf_unlisted_box, num_unlisted >= 1);

  update_columns();
}

bool ConfirmPanel::listed_check_visible(const Gtk::TreeIter& iter) const
{
  return window->species_columns.has_mark(iter, true);
}

bool ConfirmPanel::unlisted_check_visible(const Gtk::TreeIter& iter) const
{
  return window->species_columns.has_mark(iter, false);
}

void ConfirmPanel::on_listed_clicked()
{
  on_summary_clicked(*conf_listed_tree);
}

void ConfirmPanel::on_unlisted_clicked()
{
  on_summary_clicked(*conf_unlisted_tree);
}

// Expands or collapses a family, unless the keyboard moves the cursor. Does nothing for species.
void ConfirmPanel::on_summary_clicked(Gtk::TreeView& tree)
{
  const auto selection = tree.get_selection();
  const auto row = selection->get_selected();
  if (!row)
    return;
  trace_selected(*row);
  const auto paths = selection->get_selected_rows();
  if ((*row)[window->species_columns.col_id] < 0 && !paths.empty() && !comes_from_keyboard())
    toggle_row(tree, paths.front());
}

void ConfirmPanel::trace_selected(const Gtk::TreeRow& row) const
{
  const auto& columns = window->species_columns;
  if (debug_level >= 30)
    printf("species selected: id %d: %s\n", row.get_value(columns.col_id),
           row.get_value(columns.col_common).c_str());
}

void ConfirmPanel::listed_render_id(Gtk::CellRenderer*, const Gtk::TreeIter& iter)
{
  render_id_cell(window->species_columns, listed_parts.id_cell, iter);
}

void ConfirmPanel::unlisted_render_id(Gtk::CellRenderer*, const Gtk::TreeIter& iter)
{
  render_id_cell(window->species_columns, unlisted_parts.id_cell, iter);
}
