#include "store/survey-description.h"

#include "core/number.h"
#include "core/text.h"
#include "data/data-defs.h"
#include "data/region-info.h"
#include "store/read-survey.h"

#include <array>
#include <cstdio>
#include <string>

namespace {

const Glib::ustring& region_of(const Glib::ustring& subregion, const RegionInfo& regions)
{
  const auto found = regions.subregion_regions.find(subregion);
  if (found == regions.subregion_regions.end())
    throw Glib::ustring("Bad subregion");
  return found->second;
}

const RegionFishInfo& fish_of(const Glib::ustring& subregion, const RegionInfo& regions)
{
  const auto found = regions.region_fish.find(region_of(subregion, regions));
  if (found == regions.region_fish.end() || !found->second.initialised)
    throw Glib::ustring("Bad subregion");
  return found->second;
}

Glib::ustring subtype_name(int id, const RegionInfo& regions)
{
  const auto index = static_cast<std::size_t>(id);
  if (index >= regions.regions.size() || regions.regions[index].surveytypename.empty())
    throw Glib::ustring("Bad subtype " + std::to_string(id));
  return regions.regions[index].surveytypename;
}

Glib::ustring subregion_name(const Glib::ustring& code, const RegionInfo& regions)
{
  const auto found = regions.subregion_names.find(code);
  return found == regions.subregion_names.end() ? Glib::ustring() : found->second;
}

Glib::ustring month_and_day(int month, int mday)
{
  std::array<char, 32> text{};
  std::snprintf(text.data(), text.size(), "-%02d-%02d", month, mday);
  return text.data();
}

Glib::ustring start_label(int dive_start, const DataDefs& defs)
{
  const auto group = defs.defs.find("divestart");
  if (group == defs.defs.end())
    return {};
  const FromCSV::Def& starts = group->second;
  for (std::size_t i = 0; i < starts.values.size() && i < starts.labels.size(); ++i)
    if (starts.values[i] == dive_start)
      return starts.labels[i];
  return {};
}

// The largest number of characters of one entry of a file, and of the complete line.
constexpr int longest_field = 60;
constexpr int longest_line = 300;

bool has_no_width(gunichar c)
{
  return g_unichar_iszerowidth(c) || g_unichar_ismark(c);
}

// Returns `text` as one line of limited width, with an ellipsis for omitted text. Also limits
// the number of combining marks, because the toolkit takes minutes to draw thousands of them.
Glib::ustring shortened(const Glib::ustring& text, int most)
{
  constexpr int most_marks = 4; // for one character
  Glib::ustring line;
  int width = 0;
  int marks = 0;
  for (const gunichar c : text) {
    marks = has_no_width(c) ? marks + 1 : 0;
    if (width == most || marks > most_marks)
      return line + "\u2026";
    width += marks == 0 ? 1 : 0;
    const bool is_gap = g_unichar_isspace(c) || g_unichar_iscntrl(c);
    line += is_gap ? gunichar{' '} : c;
  }
  return line;
}

// Returns the entries of a survey that a list of surveys shows.
SurveySummary summary_of(const Survey& survey)
{
  return {survey.member_id, survey.subregion, survey.survey_subtype, survey.year,
          survey.month,     survey.mday,      survey.dive_start,     to_int(survey.zonecode)};
}

} // namespace

SurveySummary read_survey_summary(const std::string& path, int* member_id)
{
  const SurveySummary none;
  Survey survey;
  survey.survey_subtype = none.survey_subtype;
  for (const SurveyElement& element : read_survey_head(path)) {
    set_field_text(*element.field, element.text, survey);
    if (member_id && same_bytes(element.field->name, "member_id"))
      *member_id = to_int(survey.member_id);
  }
  return summary_of(survey);
}

Glib::ustring describe_survey(const SurveySummary& summary, const RegionInfo& regions,
                              const DataDefs& defs, bool with_member)
{
  Glib::ustring line;
  if (with_member && !summary.member_id.empty())
    line = "Member " + shortened(summary.member_id, longest_field) + " - ";

  const RegionFishInfo& fish = fish_of(summary.subregion, regions);
  line += summary.survey_subtype >= 0 ? subtype_name(summary.survey_subtype, regions)
                                      : subregion_name(summary.subregion, regions);

  if (summary.month != 0 || summary.mday != 0 || !summary.year.empty())
    line +=
        " - " + shortened(summary.year, longest_field) + month_and_day(summary.month, summary.mday);
  if (summary.dive_start > 0)
    line += " at " + start_label(summary.dive_start, defs);

  const auto zone = fish.geog_names.find(summary.zonecode);
  if (zone != fish.geog_names.end() && !zone->second.empty())
    line += " - " + zone->second;
  return shortened(line, longest_line);
}
