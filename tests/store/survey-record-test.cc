#include "data/region-fish-info.h"
#include "data/region.h"
#include "data/subregion-info.h"
#include "store/survey-record.h"

#include <gtest/gtest.h>

#include <utility>

namespace {

struct Tables {
  RegionFishInfo fish;
  SubregionInfo subregion;
  Region subtype;
  AbundanceChoices::SurveySubtypeChoiceInfo choices;
};

void fill(SurveyData& survey, Tables& tables)
{
  survey.region = "PAC";
  survey.subregion = "PNW";
  survey.region_fish = &tables.fish;
  survey.subregion_info = &tables.subregion;
  survey.survey_subtype = &tables.subtype;
  survey.abundance_choices = &tables.choices;
  survey.species_view_id = 7;
  survey.filename = "/a/long/enough/path/to/need/memory/of/its/own.MAVO-Survey";
  survey.file_etag = "1624352400:123456";
  survey.xml_current = "current";
  survey.xml_last_saved = "last";
  survey.xml_pristine = "pristine";
  survey.show_fish = survey.show_inverts = true;
  survey.show_common_name = survey.show_scientific_name = survey.show_spanish_name = true;
  survey.survey_complete = survey.is_uploaded = true;
  survey.abundances = {{10, 2}, {11, 0}};
  survey.unwritten_path = "/another/long/path.MAVO-Survey";
  survey.written_text = "what was written";
  survey.unlisted_year = "2031";
}

void expect_filled(const SurveyData& survey, const Tables& tables)
{
  EXPECT_EQ("PAC", survey.region);
  EXPECT_EQ("PNW", survey.subregion);
  EXPECT_EQ(&tables.fish, survey.region_fish);
  EXPECT_EQ(&tables.subregion, survey.subregion_info);
  EXPECT_EQ(&tables.subtype, survey.survey_subtype);
  EXPECT_EQ(&tables.choices, survey.abundance_choices);
  EXPECT_EQ(7, survey.species_view_id);
  EXPECT_EQ("/a/long/enough/path/to/need/memory/of/its/own.MAVO-Survey", survey.filename);
  EXPECT_EQ("1624352400:123456", survey.file_etag);
  EXPECT_EQ("current", survey.xml_current);
  EXPECT_EQ("last", survey.xml_last_saved);
  EXPECT_EQ("pristine", survey.xml_pristine);
  EXPECT_TRUE(survey.show_fish && survey.show_inverts);
  EXPECT_TRUE(survey.show_common_name && survey.show_scientific_name && survey.show_spanish_name);
  EXPECT_TRUE(survey.survey_complete && survey.is_uploaded);
  EXPECT_EQ((std::map<int, int>{{10, 2}, {11, 0}}), survey.abundances);
  EXPECT_EQ("/another/long/path.MAVO-Survey", survey.unwritten_path);
  EXPECT_EQ("what was written", survey.written_text);
  EXPECT_EQ("2031", survey.unlisted_year);
}

void expect_empty(const SurveyData& survey)
{
  EXPECT_TRUE(survey.region.empty() && survey.subregion.empty());
  EXPECT_EQ(nullptr, survey.region_fish);
  EXPECT_EQ(nullptr, survey.subregion_info);
  EXPECT_EQ(nullptr, survey.survey_subtype);
  EXPECT_EQ(nullptr, survey.abundance_choices);
  EXPECT_EQ(-1, survey.species_view_id);
  EXPECT_TRUE(survey.filename.empty() && survey.file_etag.empty());
  EXPECT_TRUE(survey.xml_current.empty() && survey.xml_last_saved.empty());
  EXPECT_TRUE(survey.xml_pristine.empty());
  EXPECT_FALSE(survey.show_fish || survey.show_inverts);
  EXPECT_FALSE(survey.show_common_name || survey.show_scientific_name || survey.show_spanish_name);
  EXPECT_FALSE(survey.survey_complete || survey.is_uploaded);
  EXPECT_TRUE(survey.abundances.empty());
  EXPECT_TRUE(survey.unwritten_path.empty() && survey.written_text.empty());
  EXPECT_TRUE(survey.unlisted_year.empty());
}

} // namespace

TEST(SurveyData, StartsWithNothingChosen)
{
  expect_empty(SurveyData());
}

TEST(SurveyData, CopiesEveryFieldAndClearsTheSourcesAbundances)
{
  Tables tables;
  SurveyData source;
  fill(source, tables);
  SurveyData target;
  target.abundances[99] = 1;

  target = std::move(source);

  expect_filled(target, tables);
  // The state of the source is part of the contract.
  // NOLINTBEGIN(bugprone-use-after-move)
  EXPECT_TRUE(source.abundances.empty());
  EXPECT_EQ("PNW", source.subregion) << "texts are copied";
  source.abundances[1] = 1;
  EXPECT_EQ(1U, source.abundances.size());
  // NOLINTEND(bugprone-use-after-move)
}

TEST(SurveyData, IsResetByAssigningANewOne)
{
  Tables tables;
  SurveyData survey;
  fill(survey, tables);
  survey = SurveyData();
  expect_empty(survey);
}

TEST(SurveyData, KeepsEverythingWhenAssignedToItself)
{
  Tables tables;
  SurveyData survey;
  fill(survey, tables);
  SurveyData& same = survey;
  survey = std::move(same);
  expect_filled(survey, tables);
}
