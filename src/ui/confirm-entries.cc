// The part of the Confirmation page that leads back to what has to be put right.
#include "ui/confirm-panel.h"
#include "ui/listed-panel.h"
#include "ui/member-panel.h"
#include "ui/survey-panel1.h"
#include "ui/survey-panel2.h"
#include "ui/survey-window.h"

#include <algorithm>
#include <iterator>

namespace {

// The first part of the date that is not chosen; the first of all if it is a wrong date.
Gtk::Widget* date_to_correct(const SurveyPanel1& when)
{
  for (auto* part : {when.month, when.mday, when.year})
    if (part->get_id() == part->no_value)
      return part;
  return when.month;
}

} // namespace

std::vector<ConfirmPanel::Entry> ConfirmPanel::entries() const
{
  const auto& member = *window->member_panel;
  const auto& where = *window->survey_panel1;
  const auto& how = *window->survey_panel2;
  const auto& listed = *window->listed_panel;
  const bool wants_confirmation = confirm_bottom_time->get_visible();
  const Entry bottom_time = wants_confirmation
                                ? Entry{conf_label_bottom_time, page, confirm_bottom_time}
                                : Entry{conf_label_bottom_time, how.page, how.bottom_time};
  return {
      {conf_label_member_id, member.page, member.member_id},
      {conf_label_last_name, member.page, member.last_name},
      {conf_label_survey_type, where.page, where.survey_subtype},
      {conf_label_survey_date, where.page, date_to_correct(where)},
      {conf_label_dive_start, where.page, where.dive_start},
      {conf_label_zone_code, where.page, where.zonecode},
      {conf_label_total_species, listed.page, listed.species_tree},
      {conf_label_surface_temp, how.page, how.surface_temp},
      {conf_label_bottom_temp, how.page, how.bottom_temp},
      bottom_time,
      {conf_label_avg_depth, how.page, how.avg_depth},
      {conf_label_max_depth, how.page, how.max_depth},
      {conf_label_visibility, how.page, how.visibility},
      {conf_label_current, how.page, how.current},
      {conf_label_habitat, how.page, how.habitat},
  };
}

std::vector<ConfirmPanel::Entry> ConfirmPanel::marked_entries() const
{
  const auto all = entries();
  std::vector<Entry> marked;
  std::copy_if(all.begin(), all.end(), std::back_inserter(marked),
               [this](const Entry& entry) { return is_marked(entry.name); });
  return marked;
}

void ConfirmPanel::on_verdict_clicked()
{
  const auto marked = marked_entries();
  if (marked.empty()) {
    window->ready_button->grab_focus();
    return;
  }
  window->notebook->set_current_page(marked.front().page);
  marked.front().field->grab_focus();
}
