#include "ui/unlisted-panel.h"

#include "ui/survey-window.h"

UnlistedPanel::UnlistedPanel(BaseObjectType* cobject, const Glib::RefPtr<Gtk::Builder>&)
    : Gtk::Grid(cobject)
{
}

void UnlistedPanel::ctor_continued(const Glib::RefPtr<Gtk::Builder>& builder,
                                   SurveyWindow* the_window)
{
  window = the_window;
  my_app = window->my_app;
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

  found_species_heading->hide();
  no_found_species_heading->hide();
  selected_species_box->hide();
  found_species_box->hide();
  species_search_by->set_active(0);
}

void UnlistedPanel::setup_for_subregion(const Glib::ustring&) {}

void UnlistedPanel::setup_for_survey_subtype() {}

void UnlistedPanel::refilter() {}

void UnlistedPanel::refilter_selected() {}

void UnlistedPanel::update_columns() {}
