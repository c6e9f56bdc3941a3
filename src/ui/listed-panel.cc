#include "ui/listed-panel.h"

#include "core/my-app.h"
#include "core/report.h"
#include "core/text.h"
#include "core/widget-helpers.h"
#include "data/region-fish-info.h"
#include "data/species-views.h"
#include "data/subregion-info.h"
#include "ui/confirm-panel.h"
#include "ui/rarity-notes.h"
#include "ui/species-instructions.h"
#include "ui/style.h"
#include "ui/survey-window.h"
#include "ui/unlisted-panel.h"

#include <cstdio>

namespace {

// Detaches the stores from all their trees during its lifetime. Inserting rows that no tree
// watches is many times faster.
class DetachedStores
{
public:
  explicit DetachedStores(SurveyWindow& the_window) : window(the_window)
  {
    window.listed_panel->species_tree->unset_model();
    window.unlisted_panel->detach_models();
    window.confirm_panel->detach_models();
  }
  ~DetachedStores()
  {
    window.listed_panel->species_tree->set_model(window.listed_model);
    window.unlisted_panel->attach_models();
    window.confirm_panel->attach_models();
  }
  DetachedStores(const DetachedStores&) = delete;
  DetachedStores& operator=(const DetachedStores&) = delete;

private:
  SurveyWindow& window;
};

} // namespace

ListedPanel::ListedPanel(BaseObjectType* cobject, const Glib::RefPtr<Gtk::Builder>&)
    : Gtk::Grid(cobject)
{
}

void ListedPanel::ctor_continued(const Glib::RefPtr<Gtk::Builder>& builder,
                                 SurveyWindow* the_window)
{
  window = the_window;
  my_app = window->my_app;
  find_widgets(builder);
  name_display_both->set_active();
  connect_choices();
  connect_tree();
}

void ListedPanel::find_widgets(const Glib::RefPtr<Gtk::Builder>& builder)
{
  builder->get_widget("listed_instructions", listed_instructions);
  builder->get_widget_derived("species_view", species_view);
  builder->get_widget("name_display_common", name_display_common);
  builder->get_widget("name_display_scientific", name_display_scientific);
  builder->get_widget("name_display_both", name_display_both);
  builder->get_widget("spanish_enable", spanish_enable);
  builder->get_widget("species_tree", species_tree);
  builder->get_widget("listed_expand_all_button", listed_expand_all_button);
  builder->get_widget("listed_collapse_all_button", listed_collapse_all_button);
}

void ListedPanel::connect_choices()
{
  for (auto* button : {name_display_common, name_display_scientific, name_display_both})
    button->signal_toggled().connect(
        sigc::bind(sigc::mem_fun(*this, &ListedPanel::on_name_display_changed), button));
  spanish_enable->signal_toggled().connect(
      sigc::mem_fun(*this, &ListedPanel::on_spanish_display_changed));
  species_view->init({}, -1);
  species_view->signal_changed().connect(sigc::mem_fun(*this, &ListedPanel::on_view_changed));
}

void ListedPanel::connect_tree()
{
  species_tree->set_model(window->listed_model);
  species_tree->signal_button_press_event().connect(
      sigc::mem_fun(*this, &ListedPanel::on_species_clicked), false);
  species_tree->signal_key_press_event().connect(
      sigc::mem_fun(*this, &ListedPanel::on_species_kb_event), false);
  species_tree->signal_popup_menu().connect(
      sigc::mem_fun(*this, &ListedPanel::on_species_kb_activated));
  species_selection = species_tree->get_selection();
  prepare_species_tree(
      *species_tree, species_parts, sigc::mem_fun(*this, &ListedPanel::render_species_id),
      [this](const Gtk::TreePath& path, guint32 time) { do_species_line_trigger(path, 0, time); });
  explain_rarity(*window, *species_tree);
  listed_expand_all_button->signal_clicked().connect(
      sigc::mem_fun(*species_tree, &Gtk::TreeView::expand_all));
  listed_collapse_all_button->signal_clicked().connect(
      sigc::mem_fun(*species_tree, &Gtk::TreeView::collapse_all));
}

void ListedPanel::setup_for_subregion(const Glib::ustring& subregion)
{
  const SurveyData& survey = window->survey;
  setup_instructions(*survey.region_fish);
  show_or_hide(spanish_enable, survey.region_fish->has_spanish);

  const FromCSV::Def& views = survey.subregion_info->view_choices;
  species_view->init(views.values, views.labels, -1, 0);
  species_view->set_id(survey.subregion_info->default_view);
  if (debug_level >= 3)
    printf("subregion now %s; active view id now %d; about to update for view\n", subregion.c_str(),
           species_view->get_id());
  update_for_view();
}

void ListedPanel::setup_instructions(RegionFishInfo& info)
{
  const bool type_chosen = window->survey.survey_subtype != nullptr;
  listed_instructions->set_label(
      species_instructions(type_chosen, info.max_rarefishind, info.has_spanish));
  make_shades_readable(*listed_instructions);
}

void ListedPanel::update_for_view()
{
  species_tree->remove_all_columns();
  fill_models();
  if (!window->survey.survey_subtype)
    return;
  expand_selected_families();
  update_columns();
}

void ListedPanel::fill_models()
{
  const DetachedStores detached(*window);
  window->listed_model->clear();
  window->unlisted_model->clear();
  SurveyData& survey = window->survey;
  if (!survey.survey_subtype)
    return;

  const int view_id = species_view->get_id();
  survey.species_view_id = view_id;
  if (debug_level >= 1)
    printf("Using view id %d; show_fish=%d, show_inverts=%d\n", view_id, survey.show_fish,
           survey.show_inverts);
  const ShownKinds shown{survey.show_fish, survey.show_inverts};
  const SpeciesViews& views = *window->reference_data.species_views;
  build_species_model(
      window->unlisted_model,
      all_species_list(*survey.region_fish, views.species_set(view_id), shown, species_order));
  build_species_model(window->listed_model,
                      view_species_list(*survey.region_fish, views.species_of(view_id), shown));
}

void ListedPanel::build_species_model(const Glib::RefPtr<Gtk::TreeStore>& model,
                                      const std::vector<SpeciesListItem>& species_list)
{
  const SpeciesTreeColumns& columns = window->species_columns;
  const auto& abundances = window->survey.abundances;
  const Glib::ustring no_name;
  const RegionFishInfo::Family* family = nullptr;
  GtkTreeIter family_row{};
  bool family_in_view = false;

  for (const auto& item : species_list) {
    if (!family || item.family->id != family->id) {
      family = item.family;
      family_in_view = item.in_view;
      family_row = columns.append(
          model, nullptr,
          {-1, family->commonname, family->scientificname, no_name, -1, item.in_view, 0});
      if (debug_level >= 3)
        printf("New family node: %s = %s (%s)\n", family->id.c_str(), family->commonname.c_str(),
               family->scientificname.c_str());
    } else if (item.in_view && !family_in_view) {
      family_in_view = true;
      gtk_tree_store_set(model->gobj(), &family_row, columns.col_in_view.index(), TRUE, -1);
    }
    const auto& species = *item.species;
    const auto found = abundances.find(species.speciesid);
    columns.append(model, &family_row,
                   {species.speciesid, species.commonname, species.scientificname,
                    species.spanishname, found == abundances.end() ? 0 : found->second,
                    item.in_view, species.rarefishind});
    if (debug_level >= 25)
      printf("Added %d %s\n", species.speciesid, species.commonname.c_str());
  }
}

void ListedPanel::set_species_view_carefully(int view_id)
{
  const auto& view_subregions = window->reference_data.species_views->view_subregions;
  const SurveyData& survey = window->survey;
  if (view_id < 0 || view_id == survey.species_view_id ||
      static_cast<std::size_t>(view_id) >= view_subregions.size() ||
      !same_bytes(survey.subregion, view_subregions[static_cast<std::size_t>(view_id)]))
    return;
  species_view->set_id(view_id);
}

void ListedPanel::expand_selected_families()
{
  const auto& columns = window->species_columns;
  window->listed_model->foreach ([&](const Gtk::TreePath& path, const Gtk::TreeIter& iter) {
    if (iter->get_value(columns.col_abundance) >= 1)
      species_tree->expand_to_path(path);
    return false;
  });
}

void ListedPanel::update_columns()
{
  if (debug_level >= 10)
    puts("Updating columns");
  set_species_tree_columns(*species_tree, species_parts, window->species_columns,
                           store_name_display(), "Number seen (click to change)");
}

NameDisplay ListedPanel::store_name_display()
{
  SurveyData& survey = window->survey;
  const bool both = name_display_both->get_active();
  survey.show_spanish_name = spanish_enable->get_active();
  survey.show_common_name = both || name_display_common->get_active();
  survey.show_scientific_name = both || name_display_scientific->get_active();
  return {survey.show_common_name, survey.show_scientific_name, survey.show_spanish_name};
}

Glib::ustring ListedPanel::rarecolor(const Glib::ustring& text)
{
  return ::rarecolor(text);
}

Glib::ustring ListedPanel::rarecolor2(const Glib::ustring& text)
{
  return ::rarecolor2(text);
}

void ListedPanel::on_view_changed()
{
  update_for_view();
  window->unlisted_panel->setup_for_subregion(window->survey.subregion);
  window->unlisted_panel->refilter_selected();
}

// A radio group also emits the signal for the button that is turned off. Ignores that one.
void ListedPanel::on_name_display_changed(Gtk::ToggleButton* button)
{
  if (debug_level >= 10)
    printf("name display button toggled, state = %d\n", button->get_active());
  if (!button->get_active())
    return;
  update_columns();
  window->unlisted_panel->update_columns();
}

void ListedPanel::on_spanish_display_changed()
{
  update_columns();
  window->unlisted_panel->update_columns();
}

bool ListedPanel::on_species_clicked(GdkEventButton* event)
{
  trace_species_click(event);
  const Gtk::TreePath path = clicked_species_path(*species_tree, event, "species");
  return do_species_line_trigger(path, static_cast<int>(event->button), event->time);
}

bool ListedPanel::on_species_kb_event(GdkEventKey* event)
{
  return do_species_line_trigger(key_row_path(*species_tree, event), 0, event->time);
}

bool ListedPanel::on_species_kb_activated()
{
  return do_species_line_trigger(cursor_path(*species_tree), 0, 0);
}

bool ListedPanel::do_species_line_trigger(const Gtk::TreePath& path, int button, unsigned int time)
{
  return trigger_species_line(*window, *species_tree, window->listed_model, path, button, time);
}

void ListedPanel::render_species_id(Gtk::CellRenderer*, const Gtk::TreeIter& iter)
{
  render_id_cell(window->species_columns, species_parts.id_cell, iter);
}
