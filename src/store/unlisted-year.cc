#include "store/unlisted-year.h"

#include "core/markup.h"
#include "core/message-dialog.h"
#include "core/report.h"
#include "ui/drop-down-box.h"
#include "ui/survey-panel1.h"
#include "ui/survey-window.h"

namespace {

// Returns the year as markup. A document can have any text as its year.
Glib::ustring shown_year(const Glib::ustring& year)
{
  constexpr Glib::ustring::size_type most_characters = 20;
  const bool is_long = year.size() > most_characters;
  return escape_markup(is_long ? year.substr(0, most_characters) + "\u2026" : year);
}

// Returns the first and the last year of the list, in brackets. If the clock is before the
// first year, the list is empty.
Glib::ustring range(const DropDownBox& years)
{
  if (years.items.empty())
    return {};
  return " (" + years.items.back().second + " to " + years.items.front().second + ")";
}

} // namespace

void report_unlisted_year(const SurveyWindow& window)
{
  if (window.survey.unlisted_year.empty())
    return;
  titled_error("Year Not In The List",
               "The year of this survey, %s, is not in the list of years%s.\n"
               "Please check the date of this computer.\n\n"
               "The survey is shown without a year. Its file still has it.",
               shown_year(window.survey.unlisted_year).c_str(),
               range(*window.survey_panel1->year).c_str());
}

bool may_be_saved_without_its_year(const SurveyWindow& window)
{
  if (window.survey.unlisted_year.empty() || !window.survey_panel1->year->get_label().empty())
    return true;
  Message message;
  message.title = "Save Survey Without Its Year?";
  message.text = "The year of this survey, " + shown_year(window.survey.unlisted_year) +
                 ", is not in the list of years.\nIt would be saved without a year.\n\n"
                 "Click Save to save it without a year,\nor Cancel to leave its file as it is.";
  message.type = Gtk::MESSAGE_WARNING;
  message.buttons = {{"gtk-save", Gtk::RESPONSE_ACCEPT}, {"gtk-cancel", Gtk::RESPONSE_CANCEL}};
  return run_message(message) == Gtk::RESPONSE_ACCEPT;
}
