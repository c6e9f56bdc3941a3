#include "ui/tooltips.h"

#include "ui/confirm-panel.h"
#include "ui/member-panel.h"
#include "ui/survey-panel1.h"
#include "ui/survey-panel2.h"
#include "ui/survey-window.h"

#include <string>

namespace {

const char* const is_uploaded = "This survey has been uploaded; it can no longer be changed";

// Explains all widgets that a survey locks when it has been uploaded.
void explain_uploaded_survey(SurveyWindow& window)
{
  const auto& member = *window.member_panel;
  const auto& where = *window.survey_panel1;
  const auto& conditions = *window.survey_panel2;
  Gtk::Widget* const locked[] = {window.save_button,
                                 window.ready_button,
                                 window.upload_button,
                                 member.member_id,
                                 member.last_name,
                                 where.subregion,
                                 where.survey_subtype,
                                 where.month,
                                 where.mday,
                                 where.year,
                                 where.dive_start,
                                 where.zonecode,
                                 conditions.surface_temp,
                                 conditions.bottom_temp,
                                 conditions.temp_units,
                                 conditions.bottom_time,
                                 conditions.visibility,
                                 conditions.avg_depth,
                                 conditions.max_depth,
                                 conditions.current,
                                 conditions.habitat,
                                 window.confirm_panel->confirm_bottom_time};
  for (auto* widget : locked)
    widget->set_tooltip_text(is_uploaded);
}

// Explains the fields that depend on the location. Without a location, the tooltips of the
// definition file ask for one.
void explain_fields_of_location(SurveyWindow& window)
{
  const auto& where = *window.survey_panel1;
  window.save_button->set_tooltip_text("Save this survey as it is, to finish it later");
  where.survey_subtype->set_tooltip_text("How you surveyed; it decides which species are offered");
  where.zonecode->set_tooltip_text("Type the eight digits, or click the zone in the list");
  window.survey_panel2->habitat->set_tooltip_text(
      "The habitat that you saw most of; the list below explains them");
}

void explain_verdict(SurveyWindow& window)
{
  const char* const remedy =
      window.survey.survey_complete ? "" : ". First fix what the Confirmation page marks in red.";
  window.upload_button->set_tooltip_text(std::string("Save this survey and send it to MAVO now") +
                                         remedy);
  window.ready_button->set_tooltip_text(
      std::string("Save this survey as ready, to send it when you are online") + remedy);
}

void explain_navigation(SurveyWindow& window)
{
  window.back_button->set_tooltip_text(window.back_button->get_sensitive()
                                           ? "Go to the page before this one"
                                           : "This is the first page");
  const bool opens = window.notebook->get_current_page() == 0;
  window.next_button->set_tooltip_text(
      !window.next_button->get_sensitive() ? "This is the last page"
      : opens ? "Go to the next page, or open the survey that is selected in the list"
              : "Go to the next page");
}

} // namespace

void show_current_tooltips(SurveyWindow& window)
{
  explain_navigation(window);
  const bool has_location = !window.survey.subregion.empty();
  if (has_location)
    window.survey_panel1->zone_search->set_tooltip_text("A part of the name is enough");
  if (window.survey.is_uploaded) {
    explain_uploaded_survey(window);
    return;
  }
  if (has_location)
    explain_fields_of_location(window);
  explain_verdict(window);
}
