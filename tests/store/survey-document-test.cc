#include "core/version.h"
#include "store/survey-document.h"
#include "store/survey-reader.h"
#include "support/data-set.h"

#include <glibmm/miscutils.h>
#include <glibmm/spawn.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <string>

namespace {

Survey full_form()
{
  Survey form;
  form.member_id = "1234";
  form.last_name = "Núñez";
  form.subregion = "PNW";
  form.survey_subtype = 3;
  form.year = "2021";
  form.month = 6;
  form.mday = 30;
  form.dive_start = 9;
  form.zonecode = "31020003";
  form.surface_temp = "12.5";
  form.bottom_temp = "9";
  form.temp_units = "C";
  form.bottom_time = "130";
  form.bottom_time_confirmed = true;
  form.visibility = 2;
  form.avg_depth = 2;
  form.max_depth = 3;
  form.current = 1;
  form.habitat = 3;
  form.species_view = 2;
  return form;
}

// Returns the expected file with the date of this build.
std::string expected_document(const std::string& name)
{
  const std::string date_of_the_files = "2021-12-18 19:29:14";
  std::string text = read_file(EXPECTED_DOCUMENTS + name);
  return text.replace(text.find(date_of_the_files), date_of_the_files.size(), BuildInfo::date_str);
}

// Returns the platform with another search path for commands.
Glib::ustring platform_on(const std::string& search_path)
{
  const std::string previous = Glib::getenv("PATH");
  Glib::setenv("PATH", search_path);
  Glib::ustring platform = software_platform();
  Glib::setenv("PATH", previous);
  return platform;
}

} // namespace

TEST(SurveyDocument, OfAnEmptyFormHasEveryElement)
{
  EXPECT_EQ(expected_document("empty.xml"), survey_document({}, "").raw());
}

TEST(SurveyDocument, HasAllElementsInTheirOrder)
{
  Survey survey = full_form();
  survey.species = {{10, 2, 302}, {11, 0, 0}, {21, 1, 990}, {12345, 1, 301}};
  EXPECT_EQ(expected_document("full.xml"),
            survey_document(survey, "Linux reef 6.1.0 #1 SMP x86_64").raw());
}

TEST(SurveyDocument, KeepsOnlyTheCharactersThatXmlAllows)
{
  Survey form;
  form.member_id = "1&2";
  form.last_name = "<b>O'Hara \"Jo\"</b>\tx";
  form.zonecode = "a\nb";
  form.surface_temp = "be\x01\x1b\xef\xbf\xbfll"; // control characters, U+FFFF
  form.bottom_temp = "\xff"
                     "1"; // not UTF-8
  form.bottom_time = "\xf0\x9f\x90\x9f";
  EXPECT_EQ(expected_document("odd-characters.xml"), survey_document(form, "a <b> & \"c\"").raw());
}

TEST(SurveyDocument, KeepsCarriageReturnsThroughAFile)
{
  Survey form;
  form.last_name = "a\r\nb\rc";
  DataSet directory;
  directory.file("survey", survey_document(form, "").raw());
  SurveyParser parser;
  const xmlpp::Node* survey = parse_survey_file(parser, directory.dir + "survey");
  EXPECT_EQ("a\r\nb\rc", get_content(survey->get_first_child("last_name")));
}

TEST(SurveyDocument, IsTheSameTextForTheSameSurvey)
{
  const Glib::ustring platform = software_platform();
  EXPECT_EQ(survey_document(full_form(), platform).raw(),
            survey_document(full_form(), software_platform()).raw());
}

TEST(SurveyDocument, UsesFahrenheitWithoutAUnit)
{
  Survey form;
  form.temp_units = "";
  EXPECT_NE(std::string::npos, survey_document(form, "").raw().find("<temp_units>F</temp_units>"));
}

TEST(SoftwarePlatform, IsTheFirstLineOfUname)
{
  std::string line;
  Glib::spawn_command_line_sync("uname -a", &line);
  EXPECT_EQ(line.substr(0, line.find('\n')), software_platform().raw());
  EXPECT_NE(0U, software_platform().raw().size());
}

TEST(SoftwarePlatform, IsEmptyIfTheCommandCannotBeRun)
{
  const DataSet empty_directory;
  EXPECT_EQ("", platform_on(empty_directory.dir));
}

TEST(SoftwarePlatform, IsTruncatedAtTheFirstLineEnd)
{
  const DataSet directory;
  directory.file("uname", "#!/bin/sh\necho first $1\necho second\n");
  ASSERT_EQ(0, chmod((directory.dir + "uname").c_str(), 0755));
  EXPECT_EQ("first -a", platform_on(directory.dir));
}
