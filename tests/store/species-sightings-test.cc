#include "data/abundance-choices.h"
#include "data/region-info.h"
#include "store/survey-document.h"
#include "support/data-set.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>

namespace {

// A survey with the minimal data set. Its types are 1 (abundances, three classes), 2 (presence
// only) and 3 (abundances, two classes). Species 10 to 12 are fish, 20 is an invertebrate, and 21
// is an invertebrate of which only the presence is recorded.
class SpeciesSightings : public testing::Test
{
public:
  void SetUp() override
  {
    data.minimal();
    load();
  }

  void load()
  {
    regions.emplace(data.dir);
    choices.emplace(data.dir);
    ASSERT_TRUE(regions->is_valid() && choices->is_valid());
    survey.region_fish = &regions->region_fish["PAC"];
  }

  void choose_type(int id)
  {
    survey.survey_subtype = &regions->regions[static_cast<std::size_t>(id)];
    survey.abundance_choices = choices->find_subtype(id);
  }

  // Returns the list as "id/abun/resp" words, or the text of the exception.
  std::string sightings() const
  {
    try {
      std::string text;
      for (const auto& sighting : species_sightings(survey, *choices))
        text += (text.empty() ? "" : " ") + std::to_string(sighting.id) + "/" +
                std::to_string(sighting.abun) + "/" + std::to_string(sighting.resp);
      return text;
    } catch (const Glib::ustring& thrown) {
      return thrown.raw();
    }
  }

  DataSet data;
  std::optional<RegionInfo> regions;
  std::optional<AbundanceChoices> choices;
  SurveyData survey;
};

} // namespace

TEST_F(SpeciesSightings, AreEmptyWithoutSpecies)
{
  choose_type(1);
  EXPECT_EQ("", sightings());
  survey.abundances = {{10, 0}, {11, 0}};
  EXPECT_EQ("", sightings());
}

TEST_F(SpeciesSightings, AreInAscendingOrderWithTheResponseOfTheirClass)
{
  choose_type(1);
  survey.abundances = {{12, 3}, {10, 1}, {11, 0}};
  EXPECT_EQ("10/1/101 12/3/103", sightings());
}

TEST_F(SpeciesSightings, AreOfClassOneIfTheTypeRecordsPresenceOnly)
{
  choose_type(2);
  survey.abundances = {{10, 3}, {11, 2}, {12, 1}};
  EXPECT_EQ("10/1/201 11/1/201 12/1/201", sightings());
  EXPECT_EQ(3, survey.abundances[10]) << "the survey itself keeps its abundances";
}

TEST_F(SpeciesSightings, OfPresenceOnlyInvertebratesHaveTheResponseOfTheirOwnList)
{
  choose_type(3); // has another class 1
  survey.abundances = {{20, 1}, {21, 1}};
  EXPECT_EQ("20/1/301 21/1/990", sightings());
}

TEST_F(SpeciesSightings, KeepTheirAbundancesWhileNoTypeIsChosen)
{
  survey.abundance_choices = choices->find_subtype(1); // of the previous type
  survey.abundances = {{10, 3}};
  EXPECT_EQ("10/3/103", sightings());
}

TEST_F(SpeciesSightings, AreRefusedIfTheDataHaveNoResponse)
{
  const struct {
    const char* why;
    int type;
    std::map<int, int> abundances;
    const char* expected;
  } cases[] = {
      {"class beyond the list", 1, {{10, 4}}, "Internal error: abun 4 -> resp -1?!"},
      {"negative class", 1, {{10, -7}}, "Internal error: abun -7 -> resp -1?!"},
      {"class beyond its own list", 3, {{21, 2}}, "Internal error: abun 2 -> resp -1?!"},
      {"negative species", 1, {{-1, 2}}, "Internal error: abun 2 -> resp -1?!"},
      {"the class that would be written", 4, {{10, 3}}, "Internal error: abun 3 -> resp -1?!"},
      {"after a valid sighting", 1, {{10, 1}, {11, 9}}, "Internal error: abun 9 -> resp -1?!"},
  };
  for (const auto& c : cases) {
    choose_type(c.type);
    survey.abundances = c.abundances;
    EXPECT_EQ(c.expected, sightings()) << c.why;
  }
}

TEST_F(SpeciesSightings, KeepSpeciesThatTheDataLack)
{
  choose_type(1);
  survey.abundances = {{13, 2}, {1000000, 1}}; // in a gap, and beyond the table
  EXPECT_EQ("13/2/102 1000000/1/101", sightings());
}

TEST_F(SpeciesSightings, AreRefusedWithoutTheListThatTheyNeed)
{
  survey.abundances = {{10, 1}};
  EXPECT_EQ("Internal error: abun 1 -> resp -1?!", sightings()) << "no list chosen yet";

  survey.region_fish = nullptr;
  choose_type(1);
  EXPECT_EQ("Internal error: abun 1 -> resp -1?!", sightings()) << "no region chosen yet";
}

TEST_F(SpeciesSightings, AreRefusedIfTheDataLackTheListOfPresenceOnlyInvertebrates)
{
  data.file("abundance-choices.csv",
            "responseid,survey_subtype_id,label,abun\n301,3,Single (1),1\n");
  load();
  choose_type(3);
  survey.abundances = {{20, 1}};
  EXPECT_EQ("20/1/301", sightings());
  survey.abundances = {{21, 1}};
  EXPECT_EQ("Internal error: abun 1 -> resp -1?!", sightings());
}

TEST_F(SpeciesSightings, AreRefusedForAClassThatTheListSkips)
{
  data.file("abundance-choices.csv", "responseid,survey_subtype_id,label,abun\n"
                                     "101,1,Single (1),1\n104,1,Abundant (>100),4\n");
  load();
  choose_type(1);
  survey.abundances = {{10, 4}};
  EXPECT_EQ("10/4/104", sightings());
  survey.abundances = {{10, 2}};
  EXPECT_EQ("Internal error: abun 2 -> resp -1?!", sightings());
}

TEST_F(SpeciesSightings, AreRefusedIfTheResponseIsZero)
{
  data.file("abundance-choices.csv", "responseid,survey_subtype_id,label,abun\n0,1,Single (1),1\n");
  load();
  choose_type(1);
  survey.abundances = {{10, 1}};
  EXPECT_EQ("Internal error: abun 1 -> resp 0?!", sightings());
}
