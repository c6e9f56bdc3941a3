// The part of the Confirmation page that leads to the entries to correct.
#include "store/survey-fields.h"
#include "ui/confirm-panel.h"
#include "ui/listed-panel.h"
#include "ui/survey-panel1.h"
#include "ui/survey-panel2.h"
#include "ui/survey-window.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace {

// Returns the first part of the date that is not chosen, or the first part of an invalid date.
Gtk::Widget* date_to_correct(const SurveyPanel1& when)
{
  for (auto* part : {when.month, when.mday, when.year})
    if (part->get_id() == part->no_value)
      return part;
  return when.month;
}

// Returns the position of an entry on the page: its half, and the row in that half.
std::pair<int, int> place_on_page(Gtk::Label& name)
{
  auto& rows = dynamic_cast<Gtk::Grid&>(*name.get_parent());
  auto& halves = dynamic_cast<Gtk::Box&>(*rows.get_parent());
  return {halves.child_property_position(rows), rows.child_property_top_attach(name)};
}

int page_of(Gtk::Widget& field, Gtk::Notebook& notebook)
{
  Gtk::Widget* page = &field;
  while (page->get_parent() != &notebook)
    page = page->get_parent();
  return notebook.page_num(*page);
}

} // namespace

std::vector<ConfirmPanel::Entry> ConfirmPanel::entries() const
{
  std::vector<Entry> all = entries_with_own_rules();
  for (const SurveyField& field : survey_fields())
    if (field.summary)
      all.push_back({&window->fields.summary_name(field), &window->fields.input(field)});
  std::sort(all.begin(), all.end(), [](const Entry& one, const Entry& other) {
    return place_on_page(*one.name) < place_on_page(*other.name);
  });
  return all;
}

std::vector<ConfirmPanel::Entry> ConfirmPanel::entries_with_own_rules() const
{
  const auto& where = *window->survey_panel1;
  const auto& how = *window->survey_panel2;
  Gtk::Widget* const bottom_time = how.bottom_time;
  return {
      {conf_label_survey_type, where.survey_subtype},
      {conf_label_survey_date, date_to_correct(where)},
      {conf_label_zone_code, where.zonecode},
      {conf_label_total_species, window->listed_panel->species_tree},
      {conf_label_surface_temp, how.surface_temp},
      {conf_label_bottom_temp, how.bottom_temp},
      {conf_label_bottom_time,
       confirm_bottom_time->get_visible() ? confirm_bottom_time : bottom_time},
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
  Gtk::Widget& field = *marked.front().field;
  window->notebook->set_current_page(page_of(field, *window->notebook));
  field.grab_focus();
}
