#include "ui/unlisted-panel.h"

#include "core/report.h"
#include "core/widget-helpers.h"
#include "data/region-fish-info.h"
#include "ui/listed-panel.h"
#include "ui/plain-models.h"
#include "ui/rarity-notes.h"
#include "ui/search-field.h"
#include "ui/survey-window.h"

#include <algorithm>
#include <cstdio>
#include <utility>

namespace {

const char* const abundance_title = "Number seen (click to change)";

} // namespace

UnlistedPanel::UnlistedPanel(BaseObjectType* cobject, const Glib::RefPtr<Gtk::Builder>&)
    : Gtk::Grid(cobject)
{
}

void UnlistedPanel::ctor_continued(const Glib::RefPtr<Gtk::Builder>& builder,
                                   SurveyWindow* the_window)
{
  window = the_window;
  my_app = window->my_app;
  find_widgets(builder);
  connect_selected_tree();
  connect_found_tree();
  attach_models();

  found_species_heading->hide();
  no_found_species_heading->hide();
  selected_species_box->hide();
  found_species_box->hide();
  species_search_by->set_active(0);
  prepare_search_field(*species_search, [this] { go_to_first_result(); });
  species_search->signal_changed().connect(sigc::mem_fun(*this, &UnlistedPanel::on_search_changed));
  species_search_by->signal_changed().connect(
      sigc::mem_fun(*this, &UnlistedPanel::on_search_changed));
  update_columns();
}

void UnlistedPanel::find_widgets(const Glib::RefPtr<Gtk::Builder>& builder)
{
  builder->get_widget("unlisted_instructions", unlisted_instructions);
  builder->get_widget("selected_species_box", selected_species_box);
  builder->get_widget("selected_species_tree", selected_species_tree);
  builder->get_widget("search_box", search_box);
  builder->get_widget("species_search", species_search);
  builder->get_widget_derived("species_search_by", species_search_by);
  builder->get_widget("found_species_box", found_species_box);
  builder->get_widget("found_species_heading", found_species_heading);
  builder->get_widget("no_found_species_heading", no_found_species_heading);
  builder->get_widget("found_species_tree", found_species_tree);
}

void UnlistedPanel::connect_selected_tree()
{
  selected_species_tree->signal_button_press_event().connect(
      sigc::mem_fun(*this, &UnlistedPanel::on_selected_species_clicked), false);
  selected_species_tree->signal_key_press_event().connect(
      sigc::mem_fun(*this, &UnlistedPanel::on_selected_species_kb_event), false);
  selected_species_tree->signal_popup_menu().connect(
      sigc::mem_fun(*this, &UnlistedPanel::on_selected_species_kb_activated));
  selected_selection = selected_species_tree->get_selection();
  prepare_species_tree(*selected_species_tree, selected_parts,
                       sigc::mem_fun(*this, &UnlistedPanel::render_selected_species_id),
                       [this](const Gtk::TreePath& path, guint32 time) {
                         do_selected_species_line_trigger(path, 0, time);
                       });
  explain_rarity(*window, *selected_species_tree);
}

void UnlistedPanel::connect_found_tree()
{
  found_species_tree->signal_button_press_event().connect(
      sigc::mem_fun(*this, &UnlistedPanel::on_found_species_clicked), false);
  found_species_tree->signal_key_press_event().connect(
      sigc::mem_fun(*this, &UnlistedPanel::on_found_species_kb_event), false);
  found_species_tree->signal_popup_menu().connect(
      sigc::mem_fun(*this, &UnlistedPanel::on_found_species_kb_activated));
  found_selection = found_species_tree->get_selection();
  prepare_species_tree(*found_species_tree, found_parts,
                       sigc::mem_fun(*this, &UnlistedPanel::render_found_species_id),
                       [this](const Gtk::TreePath& path, guint32 time) {
                         do_found_species_line_trigger(path, 0, time);
                       });
  explain_rarity(*window, *found_species_tree);
}

void UnlistedPanel::detach_models()
{
  selected_species_tree->unset_model();
  selected_filter.reset();
  found_species_tree->unset_model();
  found_filter.reset();
}

// Creates new filters, which test every row when the trees expand.
void UnlistedPanel::attach_models()
{
  num_selected = 0;
  selected_species = species_to_select();
  selected_filter = plain_filter(window->unlisted_model,
                                 sigc::mem_fun(*this, &UnlistedPanel::check_visible_selected));
  selected_species_tree->set_model(selected_filter);
  show_selected();

  searched_species.read_later(window->unlisted_model, window->species_columns.col_id);
  resize_matches();
  match_all();
  replace_found_filter();
}

void UnlistedPanel::setup_for_subregion(const Glib::ustring&)
{
  if (!window->survey.survey_subtype) {
    species_search->set_text("");
    unlisted_instructions->set_label(
        "Please select a survey location and type on the Survey Info Part 1 tab.");
  }
  run_search();
}

void UnlistedPanel::setup_for_survey_subtype()
{
  const SurveyData& survey = window->survey;
  if (survey.survey_subtype)
    unlisted_instructions->set_markup("Search for a species to add that was not found on the "
                                      "Listed Species page - <b>fish only, please</b>.");
  setup_for_subregion(survey.subregion);
  refilter_selected();
}

void UnlistedPanel::on_search_changed()
{
  run_search();
}

// If the text is empty, hides the tree, which retains the last results.
void UnlistedPanel::run_search()
{
  search_words.clear();
  const Glib::ustring text = species_search->get_text().lowercase();
  resize_matches();
  if (!text.empty())
    search_words = split_search_words(text);
  const bool searching = !text.empty() && window->survey.survey_subtype;
  show_or_hide(found_species_box, searching);
  if (!searching)
    return;

  const SearchMode mode = search_mode(text, species_search_by->get_label());
  search_by = mode.by;
  if (debug_level >= 1)
    printf("\nSearching for %s by %s (%d):\n", describe_search(text, search_words).c_str(),
           mode.name.c_str(), search_by);
  refilter_found();
  show_results_from_the_top();
}

// Scrolls to the top even if the cursor is further down. By itself, the tree would scroll to its
// cursor.
void UnlistedPanel::show_results_from_the_top()
{
  if (!found_filter->children().empty())
    found_species_tree->scroll_to_row(Gtk::TreePath("0"), 0);
  found_species_tree->get_vadjustment()->set_value(0);
}

// Goes to the first species, not to the family above it, which has no menu.
void UnlistedPanel::go_to_first_result()
{
  if (!found_species_box->get_visible() || found_filter->children().empty())
    return;
  const Gtk::TreePath first("0:0");
  found_species_tree->expand_to_path(first);
  found_species_tree->set_cursor(first);
  found_species_tree->grab_focus();
}

void UnlistedPanel::refilter()
{
  refilter_selected();
  refilter_found();
}

void UnlistedPanel::refilter_selected()
{
  const auto before = selected_species;
  selected_species = species_to_select();
  if (selected_species != before) {
    num_selected = 0;
    selected_filter->refilter();
  }
  show_selected();
}

// Keeps the rows and the cursor if the result is the same.
void UnlistedPanel::refilter_found()
{
  const auto before = std::make_pair(species_matched, families_matched);
  match_all();
  if (before != std::make_pair(species_matched, families_matched))
    replace_found_filter();
  if (debug_level >= 1)
    printf("search found %d\n", num_found);
  show_found();
}

void UnlistedPanel::show_selected()
{
  selected_species_tree->expand_all();
  if (num_selected == 0 && selected_species_tree->is_focus())
    species_search->grab_focus(); // the tree that has the focus is going to be hidden
  show_or_hide(selected_species_box, num_selected >= 1);
}

// Creates a new filter. With the old filter, an update would take many times longer, because a
// filter notifies the tree of each row that appears or disappears.
void UnlistedPanel::replace_found_filter()
{
  Gtk::TreePath cursor = cursor_path(*found_species_tree);
  if (!cursor.empty())
    cursor = found_filter->convert_path_to_child_path(cursor);
  found_species_tree->unset_model();
  found_filter = plain_filter(window->unlisted_model,
                              sigc::mem_fun(*this, &UnlistedPanel::check_visible_found));
  found_species_tree->set_model(found_filter);
  found_species_tree->expand_all();
  if (!cursor.empty())
    cursor = found_filter->convert_child_path_to_path(cursor);
  if (!cursor.empty())
    found_species_tree->set_cursor(cursor);
}

void UnlistedPanel::show_found()
{
  found_species_tree->expand_all();
  show_or_hide(found_species_heading, num_found != 0);
  show_or_hide(no_found_species_heading, num_found == 0);
}

bool UnlistedPanel::check_visible_selected(const Gtk::TreeIter& iter)
{
  const bool visible = window->species_columns.has_mark(iter, false);
  num_selected += visible;
  return visible;
}

std::vector<int> UnlistedPanel::species_to_select() const
{
  return window->species_columns.marked_species(window->unlisted_model, false);
}

bool UnlistedPanel::check_visible_found(const Gtk::TreeIter& iter) const
{
  if (search_words.empty())
    return false;
  if (search_by == SEARCH_BY_ALL)
    return true;
  // Uses the toolkit's C interface, which matters in a filter of thousands of rows.
  GtkTreeModel* const store = iter.get_model_gobject();
  GtkTreeIter row = *iter.gobj();
  int id = 0;
  gtk_tree_model_get(store, &row, window->species_columns.col_id.index(), &id, -1);
  if (id >= 0)
    return was_matched(id);
  const auto family =
      static_cast<std::size_t>(Gtk::TreePath(gtk_tree_model_get_path(store, &row), false)[0]);
  return family < families_matched.size() && families_matched[family];
}

// A search by family name finds a family with all its species. Any other search finds species,
// each with its family.
void UnlistedPanel::match_all()
{
  num_found = 0;
  std::fill(species_matched.begin(), species_matched.end(), char(0));
  families_matched.clear();
  if (search_words.empty())
    return;
  const bool all = search_by == SEARCH_BY_ALL;
  const bool by_family = search_by == SEARCH_BY_FAMILY_NAME;
  const auto& ids = searched_species.ids();
  for (std::size_t row = 0; row < ids.size(); ++row) {
    if (ids[row] < 0) {
      families_matched.push_back(all || (by_family && is_family_found(row)));
    } else if (!all && (by_family ? families_matched.back() : is_species_found(row))) {
      families_matched.back() = true;
      note_match(ids[row]);
    }
  }
}

bool UnlistedPanel::is_family_found(std::size_t row)
{
  return has_words(row, shown_column()) ||
         (window->survey.show_spanish_name && has_words(row, window->species_columns.col_spanish));
}

bool UnlistedPanel::is_species_found(std::size_t row)
{
  if (search_by == SEARCH_BY_FAMILY_NAME)
    assert_failure("search_by != SEARCH_BY_FAMILY_NAME", __FILE__, __LINE__);
  if (search_by == SEARCH_BY_SPECIES_CODE)
    return is_searched_code(searched_species.ids()[row], search_words);
  return has_words(row, searched_column());
}

bool UnlistedPanel::has_words(std::size_t row, const Gtk::TreeModelColumn<Glib::ustring>& column)
{
  return contains_all_words(searched_species.names(column)[row], search_words);
}

const Gtk::TreeModelColumn<Glib::ustring>& UnlistedPanel::searched_column() const
{
  const auto& columns = window->species_columns;
  switch (search_by) {
  case SEARCH_BY_SCIENTIFIC_NAME:
    return columns.col_scientific;
  case SEARCH_BY_SPANISH_NAME:
    return columns.col_spanish;
  case SEARCH_BY_BOTH_NAMES:
    return columns.col_both;
  default:
    return columns.col_common;
  }
}

// Returns the column of family names that the diver sees.
const Gtk::TreeModelColumn<Glib::ustring>& UnlistedPanel::shown_column() const
{
  const SurveyData& survey = window->survey;
  const auto& columns = window->species_columns;
  if (!survey.show_common_name)
    return columns.col_scientific;
  return survey.show_scientific_name ? columns.col_both : columns.col_common;
}

void UnlistedPanel::resize_matches()
{
  const auto* fish = window->survey.region_fish;
  species_matched.resize(fish ? fish->species.size() : 0);
}

void UnlistedPanel::note_match(int id)
{
  if (static_cast<std::size_t>(id) >= species_matched.size())
    return;
  species_matched[static_cast<std::size_t>(id)] = true;
  ++num_found;
}

bool UnlistedPanel::was_matched(int id) const
{
  const auto index = static_cast<std::size_t>(id);
  return index < species_matched.size() && species_matched[index];
}

void UnlistedPanel::update_columns()
{
  const NameDisplay names = window->listed_panel->store_name_display();
  const auto& columns = window->species_columns;
  set_species_tree_columns(*selected_species_tree, selected_parts, columns, names, abundance_title);
  set_species_tree_columns(*found_species_tree, found_parts, columns, names, abundance_title);
}

bool UnlistedPanel::on_selected_species_clicked(GdkEventButton* event)
{
  const auto path = clicked_species_path(*selected_species_tree, event, "selected_species");
  return do_selected_species_line_trigger(path, static_cast<int>(event->button), event->time);
}

bool UnlistedPanel::on_selected_species_kb_event(GdkEventKey* event)
{
  return do_selected_species_line_trigger(key_row_path(*selected_species_tree, event), 0,
                                          event->time);
}

bool UnlistedPanel::on_selected_species_kb_activated()
{
  return do_selected_species_line_trigger(cursor_path(*selected_species_tree), 0, 0);
}

bool UnlistedPanel::do_selected_species_line_trigger(const Gtk::TreePath& path, int button,
                                                     unsigned int time)
{
  return trigger_species_line(*window, *selected_species_tree, selected_filter, path, button, time);
}

void UnlistedPanel::render_selected_species_id(Gtk::CellRenderer*, const Gtk::TreeIter& iter)
{
  render_id_cell(window->species_columns, selected_parts.id_cell, iter);
}

bool UnlistedPanel::on_found_species_clicked(GdkEventButton* event)
{
  const auto path = clicked_species_path(*found_species_tree, event, "found_species");
  return do_found_species_line_trigger(path, static_cast<int>(event->button), event->time);
}

bool UnlistedPanel::on_found_species_kb_event(GdkEventKey* event)
{
  return do_found_species_line_trigger(key_row_path(*found_species_tree, event), 0, event->time);
}

bool UnlistedPanel::on_found_species_kb_activated()
{
  return do_found_species_line_trigger(cursor_path(*found_species_tree), 0, 0);
}

bool UnlistedPanel::do_found_species_line_trigger(const Gtk::TreePath& path, int button,
                                                  unsigned int time)
{
  return trigger_species_line(*window, *found_species_tree, found_filter, path, button, time);
}

void UnlistedPanel::render_found_species_id(Gtk::CellRenderer*, const Gtk::TreeIter& iter)
{
  render_id_cell(window->species_columns, found_parts.id_cell, iter);
}
