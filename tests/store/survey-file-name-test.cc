#include "store/survey-file-name.h"

#include <gtest/gtest.h>

#include <set>
#include <vector>

TEST(SurveyBaseName, HasMemberLocationDateHourAndZoneInThatOrder)
{
  const struct {
    const char* why;
    SurveyFileNameParts parts;
    const char* expected;
  } cases[] = {
      {"all given",
       {"1234", "PNW", 2021, 6, 30, "0900", "31020003"},
       "1234-PNW-20210630-0900-31020003"},
      {"no member", {"", "PNW", 2021, 6, 30, "0900", "31020003"}, "PNW-20210630-0900-31020003"},
      {"no zone", {"1234", "PNW", 2021, 6, 30, "0900", ""}, "1234-PNW-20210630-0900"},
      {"nothing but the place", {"", "PNW", 0, 0, 0, "0000", ""}, "PNW-00000000-0000"},
      {"no day", {"", "PNW", 2021, 6, 0, "0000", ""}, "PNW-20210600-0000"},
      {"parts are used unchanged",
       {"a/b & c", "PNW", 2021, 12, 1, "2300", "x y"},
       "a/b & c-PNW-20211201-2300-x y"},
      {"bytes of the texts", {"Núñez", "PNW", 0, 0, 0, "0000", ""}, "Núñez-PNW-00000000-0000"},
  };
  for (const auto& c : cases)
    EXPECT_EQ(c.expected, survey_base_name(c.parts)) << c.why;
}

namespace {

struct Choice {
  std::string path;
  std::string said;
};

Choice choose_path(const std::string& own_path, const std::set<std::string>& taken)
{
  testing::internal::CaptureStdout();
  const std::string path = first_free_path(
      "/s/PNW", own_path, [&](const std::string& candidate) { return taken.count(candidate) > 0; });
  return {path, testing::internal::GetCapturedStdout()};
}

} // namespace

TEST(FirstFreePath, IsTheStemIfThereIsNoSuchFile)
{
  const Choice choice = choose_path("", {});
  EXPECT_EQ("/s/PNW.MAVO-Survey", choice.path);
  EXPECT_EQ("Selected filename /s/PNW.MAVO-Survey\n", choice.said);
}

TEST(FirstFreePath, NumbersFromOneUpAndPrintsWhatItTried)
{
  const Choice choice = choose_path("", {"/s/PNW.MAVO-Survey", "/s/PNW-1.MAVO-Survey"});
  EXPECT_EQ("/s/PNW-2.MAVO-Survey", choice.path);
  EXPECT_EQ("Tried filename /s/PNW.MAVO-Survey but it exists\n"
            "Tried filename /s/PNW-1.MAVO-Survey but it exists\n"
            "Selected filename /s/PNW-2.MAVO-Survey\n",
            choice.said);
}

TEST(FirstFreePath, TakesTheFirstGapInTheNumbers)
{
  EXPECT_EQ("/s/PNW-1.MAVO-Survey",
            choose_path("", {"/s/PNW.MAVO-Survey", "/s/PNW-2.MAVO-Survey"}).path);
}

TEST(FirstFreePath, KeepsTheSurveysOwnFile)
{
  EXPECT_EQ("/s/PNW.MAVO-Survey", choose_path("/s/PNW.MAVO-Survey", {"/s/PNW.MAVO-Survey"}).path);
  EXPECT_EQ(
      "/s/PNW-1.MAVO-Survey",
      choose_path("/s/PNW-1.MAVO-Survey", {"/s/PNW.MAVO-Survey", "/s/PNW-1.MAVO-Survey"}).path);
}

TEST(BaseName, IsWhatFollowsTheLastSlash)
{
  const struct {
    const char* path;
    const char* expected;
  } cases[] = {
      {"/a/b/c.MAVO-Survey", "c.MAVO-Survey"}, {"c", "c"}, {"/a/", ""}, {"", ""}, {"/a b", "a b"}};
  for (const auto& c : cases)
    EXPECT_EQ(c.expected, base_name(c.path));
}

TEST(RenumberedName, ReplacesTheNumberBeforeTheExtension)
{
  const struct {
    const char* name;
    unsigned int number;
    const char* expected;
  } cases[] = {
      {"7-PNW-20210630-0900.MAVO-Survey", 1, "7-PNW-20210630-0900-1.MAVO-Survey"},
      {"7-PNW-20210630-0900-1.MAVO-Survey", 0, "7-PNW-20210630-0900.MAVO-Survey"},
      {"7-PNW-20210630-0900-12.MAVO-Survey", 13, "7-PNW-20210630-0900-13.MAVO-Survey"},
      {"7-PNW-20210630-0900-31020003.MAVO-Survey", 2, "7-PNW-20210630-0900-31020003-2.MAVO-Survey"},
      {"a", 1, "a-1"},
      {"a-", 1, "a--1"},
      {"a-b", 1, "a-b-1"},
      {"-1", 2, "-1-2"},
      {".hidden", 1, ".hidden-1"},
      {"a.b.txt", 1, "a.b-1.txt"},
      {"", 1, "-1"},
  };
  for (const auto& c : cases)
    EXPECT_EQ(c.expected, renumbered_name(c.name, c.number)) << c.name;
}
