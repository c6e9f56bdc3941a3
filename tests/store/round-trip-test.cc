#include "data/data-defs.h"
#include "data/habitat-info.h"
#include "data/region-info.h"
#include "store/random-survey.h"
#include "store/read-survey.h"
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

// Returns the texts of a form. The test compares them because equal documents do not reveal a
// fault that the reader and the writer share.
std::vector<std::string> texts_of(const Survey& form)
{
  return {form.member_id.raw(),  form.last_name.raw(),    form.subregion.raw(),
          form.zonecode.raw(),   form.surface_temp.raw(), form.bottom_temp.raw(),
          form.temp_units.raw(), form.bottom_time.raw()};
}

// Uses the data set that ships with the program.
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
  constexpr int kept = 1000; // stored for the tests of the schema and of exports
  const std::string path = application_dir.root + "/survey";
  std::size_t most_species = 0;
  std::set<std::string> habitats_used;
  RecordProperty("tried", count);
  for (int i = 0; i < count && !HasFailure(); ++i) {
    SCOPED_TRACE("survey " + std::to_string(i));
    RandomSurvey survey;
    surveys.make(survey);
    survey.form.species = species_sightings(survey.data, abundances);
    const auto& species = survey.form.species;
    const std::string written = survey_document(survey.form, "Linux <reef> & \"co\"").raw();
    write_file(path, written);
    if (i < kept)
      write_file(RANDOM_SURVEYS + std::to_string(i) + ".xml", written);
    const Survey read = read_survey(path);
    EXPECT_EQ(texts_of(survey.form), texts_of(read));
    EXPECT_EQ(numbers_of(species), numbers_of(read.species));
    EXPECT_EQ(written, survey_document(read, "Linux <reef> & \"co\"").raw());
    most_species = std::max(most_species, species.size());
    habitats_used.insert(survey.data.region.raw() + std::to_string(survey.form.habitat));
  }
  EXPECT_LT(400U, most_species);
  std::size_t habitats_offered = 0;
  for (const auto& [region, choices] : habitats.region_habitats)
    habitats_offered += choices.values.size() + 1; // and no habitat
  EXPECT_EQ(habitats_offered, habitats_used.size());
  std::printf("%d surveys written, read and written again, of up to %zu species, with %zu "
              "habitats\n",
              count, most_species, habitats_used.size());
}
