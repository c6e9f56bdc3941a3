#include "store/survey-judgement.h"

#include "core/number.h"
#include "core/text.h"
#include "data/data-params.h"
#include "data/reference-data.h"
#include "data/region.h"
#include "store/date-check.h"
#include "store/survey-checks.h"
#include "store/survey-names.h"

#include <algorithm>
#include <utility>

namespace {

const char* const required = "Required";

// The check of one survey, with the complaints so far.
class Judgement
{
public:
  Judgement(const Survey& the_survey, const ReferenceData& the_data, std::time_t the_time)
      : survey(the_survey),
        data(the_data),
        names(the_data),
        now(the_time),
        type(names.survey_type(the_survey))
  {
  }

  void check_member();
  void check_type();
  void check_date_and_start();
  void check_zone_code();
  void check_temperature_of(const char* field, const Glib::ustring& typed);
  void check_bottom_time();
  void check_depths();
  void check_current_and_habitat();
  void check_species();

  std::vector<SurveyComplaint> complaints;

private:
  void complain(const char* field, Glib::ustring text)
  {
    complaints.push_back({field, std::move(text)});
  }
  void take(const char* field, const CheckedText& checked)
  {
    if (!checked.good)
      complain(field, checked.text);
  }
  // Adds a complaint if a required entry is missing. Returns whether the entry exists.
  bool require(const char* field, const Glib::ustring& value)
  {
    if (value.empty())
      complain(field, required);
    return !value.empty();
  }
  // Does the same for a condition of the dive. Survey types that record only presence do not
  // require one; for these, returns true.
  bool require_condition(const char* field, const Glib::ustring& value)
  {
    return (type && !type->hasabundance) || require(field, value);
  }
  int limit(const Glib::ustring& parameter) const;

  const Survey& survey;
  const ReferenceData& data;
  const SurveyNames names;
  const std::time_t now;
  const Region* const type;
};

// Returns 0 if the data lack the limit.
int Judgement::limit(const Glib::ustring& parameter) const
{
  const auto& limits = data.data_params->params;
  const auto found = limits.find(parameter);
  return found == limits.end() ? 0 : found->second;
}

void Judgement::check_member()
{
  require("member_id", trim_ws(survey.member_id));
  require("last_name", trim_ws(survey.last_name));
}

void Judgement::check_type()
{
  if (type && !type->visible)
    complain("survey_subtype", type->surveytypename + " - No longer available");
}

// Treats a year, month or day that is not in its list as not chosen.
void Judgement::check_date_and_start()
{
  const int this_year = 1900 + std::localtime(&now)->tm_year;
  const auto if_listed = [](int number, int first, int last) {
    return number >= first && number <= last ? number : 0;
  };
  const int year = if_listed(to_int(survey.year), first_survey_year, this_year);
  const bool is_label = survey.year.raw() == std::to_string(year); // without any other text
  take("year", check_date(is_label ? year : 0, if_listed(survey.month, 1, 12),
                          if_listed(survey.mday, 1, 31), now));
  require("dive_start", names.choice("divestart", survey.dive_start));
}

void Judgement::check_zone_code()
{
  const Glib::ustring code = trim_ws(survey.zonecode);
  const CheckedText zone = check_zone(code, names.zone(survey));
  take("zonecode",
       {zone.text.raw() == code.raw() ? code + "   Unknown zone" : zone.text, zone.good});
}

void Judgement::check_temperature_of(const char* field, const Glib::ustring& typed)
{
  const Glib::ustring unit = survey.temp_units.raw() == "C" ? "C" : "F";
  const Glib::ustring key = unit.lowercase();
  take(field,
       check_temperature(trim_ws(typed), unit, limit("temp_min_" + key), limit("temp_max_" + key)));
}

void Judgement::check_bottom_time()
{
  const Glib::ustring typed = trim_ws(survey.bottom_time);
  if (require("bottom_time", typed) && !survey.bottom_time_confirmed &&
      is_unusual_bottom_time(to_int(typed), limit("bottom_time_confirm_under"),
                             limit("bottom_time_confirm_over")))
    complain("bottom_time", typed + " minutes   Unusual, and not confirmed");
}

void Judgement::check_depths()
{
  const Glib::ustring maximum = names.choice("depth", survey.max_depth);
  // A snorkel survey has no depths, and on the page one choice sets both boxes.
  const bool is_snorkel = maximum.raw() == "Snorkel";
  const Glib::ustring average = is_snorkel ? maximum : names.choice("depth", survey.avg_depth);
  require_condition("visibility", names.choice("visibility", survey.visibility));
  require_condition("avg_depth", average);
  if (!require_condition("max_depth", maximum) || is_snorkel)
    return;
  const int maximum_class = maximum.empty() ? -1 : survey.max_depth;
  const int average_class = average.empty() ? -1 : survey.avg_depth;
  if (maximum_class < average_class)
    complain("max_depth", maximum + "  Must be no less than Average Depth");
}

void Judgement::check_current_and_habitat()
{
  require_condition("current", names.choice("current", survey.current));
  const Glib::ustring habitat = names.habitat(survey);
  const bool is_prompt = habitat.raw().rfind("(please", 0) == 0;
  require_condition("habitat", is_prompt ? Glib::ustring() : habitat);
}

void Judgement::check_species()
{
  const auto is_seen = [](const SpeciesSighting& sighting) { return sighting.abun != 0; };
  if (std::none_of(survey.species.begin(), survey.species.end(), is_seen))
    complain("ids", "No species");
}

} // namespace

std::vector<SurveyComplaint> survey_complaints(const Survey& survey, const ReferenceData& data,
                                               std::time_t now)
{
  Judgement judgement(survey, data, now);
  judgement.check_member();
  judgement.check_type();
  judgement.check_date_and_start();
  judgement.check_zone_code();
  judgement.check_temperature_of("surface_temp", survey.surface_temp);
  judgement.check_temperature_of("bottom_temp", survey.bottom_temp);
  judgement.check_bottom_time();
  judgement.check_depths();
  judgement.check_current_and_habitat();
  judgement.check_species();
  return judgement.complaints;
}
