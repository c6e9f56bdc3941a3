#include "ui/confirm-panel.h"

#include "ui/survey-window.h"

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
  builder->get_widget("confirm_bottom_time", confirm_bottom_time);
  builder->get_widget("conf_listed_box", conf_listed_box);
  builder->get_widget("conf_listed_tree", conf_listed_tree);
  builder->get_widget("conf_unlisted_box", conf_unlisted_box);
  builder->get_widget("conf_unlisted_tree", conf_unlisted_tree);
  confirm_bottom_time->signal_toggled().connect(sigc::mem_fun(*this, &ConfirmPanel::refresh));
  conf_listed_box->hide();
  conf_unlisted_box->hide();
}

void ConfirmPanel::find_labels(const Glib::RefPtr<Gtk::Builder>& builder)
{
  static constexpr struct {
    const char* id;
    Gtk::Label* ConfirmPanel::*label;
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
  for (const auto& row : labels)
    builder->get_widget(row.id, this->*row.label);
}

void ConfirmPanel::refresh() {}
