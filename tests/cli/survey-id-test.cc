#include <gtest/gtest.h>

#include <functional>
#include <regex>
#include <set>

#include "cli/survey-id.h"

namespace {

Survey some_survey()
{
  Survey survey;
  survey.member_id = "1234";
  survey.subregion = "PNW";
  survey.species = {{10, 2, 302}, {21, 1, 301}};
  return survey;
}

} // namespace

TEST(SurveyId, IsANameBasedUuid)
{
  EXPECT_TRUE(std::regex_match(
      survey_id(some_survey()),
      std::regex("[0-9a-f]{8}-[0-9a-f]{4}-5[0-9a-f]{3}-[89ab][0-9a-f]{3}-[0-9a-f]{12}")));
}

// Users find published records by their ids, so the ids of known surveys must never change. This
// one is the result of Python's uuid5() for the namespace and the entries.
TEST(SurveyId, NeverChangesForAKnownSurvey)
{
  EXPECT_EQ("70457c1d-cdab-5bf1-81a7-f0296a46d656", survey_id(some_survey()));
}

TEST(SurveyId, DiffersWithEveryEntry)
{
  const std::function<void(Survey&)> changes[] = {
      [](Survey& s) { s.member_id = "1235"; },
      [](Survey& s) { s.last_name = "x"; },
      [](Survey& s) { s.subregion = "CAL"; },
      [](Survey& s) { s.survey_subtype = 0; },
      [](Survey& s) { s.year = "2021"; },
      [](Survey& s) { s.month = 1; },
      [](Survey& s) { s.mday = 1; },
      [](Survey& s) { s.dive_start = 1; },
      [](Survey& s) { s.zonecode = "3"; },
      [](Survey& s) { s.surface_temp = "5"; },
      [](Survey& s) { s.bottom_temp = "5"; },
      [](Survey& s) { s.temp_units = "C"; },
      [](Survey& s) { s.bottom_time = "5"; },
      [](Survey& s) { s.bottom_time_confirmed = true; },
      [](Survey& s) { s.visibility = 1; },
      [](Survey& s) { s.avg_depth = 1; },
      [](Survey& s) { s.max_depth = 1; },
      [](Survey& s) { s.current = 1; },
      [](Survey& s) { s.habitat = 1; },
      [](Survey& s) { s.species_view = 1; },
      [](Survey& s) { s.species.pop_back(); },
      [](Survey& s) { s.species.back().abun = 2; },
      [](Survey& s) { s.last_name = "\nsubregion=3:CAL"; },
  };
  std::set<std::string> ids = {survey_id(some_survey())};
  for (const auto& change : changes) {
    Survey survey = some_survey();
    change(survey);
    ids.insert(survey_id(survey));
  }
  EXPECT_EQ(std::size(changes) + 1, ids.size());
}

TEST(SurveyId, IgnoresClearedSpecies)
{
  Survey survey = some_survey();
  survey.species.push_back({30, 0, 0});
  EXPECT_EQ(survey_id(some_survey()), survey_id(survey));
}
