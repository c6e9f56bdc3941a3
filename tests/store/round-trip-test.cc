#include "core/number.h"
#include "data/data-defs.h"
#include "data/habitat-info.h"
#include "data/region-info.h"
#include "store/random-survey.h"
#include "store/survey-reader.h"
#include "support/data-set.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <set>
#include <tuple>

namespace {

std::vector<std::tuple<int, int, int>> numbers_of(const std::vector<SpeciesSighting>& species)
{
  std::vector<std::tuple<int, int, int>> numbers;
  numbers.reserve(species.size());
  for (const auto& sighting : species)
    numbers.emplace_back(sighting.id, sighting.abun, sighting.resp);
  return numbers;
}

// What a survey file holds, as it was handed to the writer.
struct ReadSurvey {
  SurveyForm form;
  std::vector<SpeciesSighting> species;
};

ReadSurvey read_survey(const std::string& path)
{
  SurveyParser parser;
  const xmlpp::Node* const survey = parse_survey_file(parser, path);
  const auto text = [&](const char* name) { return get_content(survey->get_first_child(name)); };
  const auto number = [&](const char* name) { return to_int(text(name)); };

  ReadSurvey read;
  SurveyForm& form = read.form;
  form.member_id = text("member_id");
  form.last_name = text("last_name");
  form.subregion = text("subregion");
  form.survey_subtype = number("survey_subtype");
  form.year = number("year");
  form.month = number("month");
  form.mday = number("mday");
  form.dive_start = number("dive_start");
  form.zonecode = text("zonecode");
  form.surface_temp = text("surface_temp");
  form.bottom_temp = text("bottom_temp");
  form.temp_units = text("temp_units");
  form.bottom_time = text("bottom_time");
  form.bottom_time_confirmed =
      get_numeric_attr(survey->get_first_child("bottom_time"), "confirmed") != 0;
  form.visibility = number("visibility");
  form.avg_depth = number("avg_depth");
  form.max_depth = number("max_depth");
  form.current = number("current");
  form.habitat = number("habitat");
  form.species_view = number("species_view");
  for (const auto* species : survey->get_first_child("ids")->get_children("species"))
    read.species.push_back({get_numeric_attr(species, "id"), get_numeric_attr(species, "abun"),
                            get_numeric_attr(species, "resp")});
  return read;
}

// The texts of a form: what a reader and a writer with the same flaw would both
// get wrong.
std::vector<std::string> texts_of(const SurveyForm& form)
{
  return {form.member_id.raw(),  form.last_name.raw(),    form.subregion.raw(),
          form.zonecode.raw(),   form.surface_temp.raw(), form.bottom_temp.raw(),
          form.temp_units.raw(), form.bottom_time.raw()};
}

// The tables of the data set that ships with the program.
class RoundTrip : public testing::Test
{
public:
  RoundTrip() { application_dir.use_shipped_data(); }

  ApplicationDir application_dir;
};

} // namespace

TEST_F(RoundTrip, OfAThousandSurveysWritesTheSameBytesAgain)
{
  RegionInfo regions("data-files/");
  AbundanceChoices abundances("data-files/");
  HabitatInfo habitats("data-files/");
  DataDefs defs("data-files/");
  ASSERT_TRUE(regions.is_valid() && abundances.is_valid() && habitats.is_valid() &&
              defs.is_valid());
  RandomSurveys surveys({regions, abundances, habitats, defs});

  constexpr int count = 1200;
  constexpr int kept = 200; // for the check against the schema
  const std::string path = application_dir.root + "/survey";
  std::size_t most_species = 0;
  std::set<std::string> habitats_met;
  RecordProperty("tried", count);
  for (int i = 0; i < count && !HasFailure(); ++i) {
    SCOPED_TRACE("survey " + std::to_string(i));
    RandomSurvey survey;
    surveys.make(survey);
    const auto species = species_sightings(survey.data, abundances);
    const std::string written =
        survey_document(survey.form, species, "Linux <reef> & \"co\"").raw();
    write_file(path, written);
    if (i < kept)
      write_file(RANDOM_SURVEYS + std::to_string(i) + ".xml", written);
    const ReadSurvey read = read_survey(path);
    EXPECT_EQ(texts_of(survey.form), texts_of(read.form));
    EXPECT_EQ(numbers_of(species), numbers_of(read.species));
    EXPECT_EQ(written, survey_document(read.form, read.species, "Linux <reef> & \"co\"").raw());
    most_species = std::max(most_species, species.size());
    habitats_met.insert(survey.data.region.raw() + std::to_string(survey.form.habitat));
  }
  EXPECT_LT(400U, most_species);
  std::size_t habitats_known = 0;
  for (const auto& [region, choices] : habitats.region_habitats)
    habitats_known += choices.values.size() + 1; // and none
  EXPECT_EQ(habitats_known, habitats_met.size());
  std::printf("%d surveys written, read and written again, of up to %zu species, with %zu "
              "habitats\n",
              count, most_species, habitats_met.size());
}
