#include "data/data-defs.h"
#include "data/region-info.h"
#include "store/survey-description.h"
#include "support/data-set.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>

namespace {

class DescribeSurvey : public testing::Test
{
public:
  void SetUp() override
  {
    data.minimal();
    data.file("PAC-geog.csv", "geogid,name\n3,Washington\n31020003,Rosario Wall\n31020009,\n");
    load();
  }

  void load()
  {
    regions.emplace(data.dir);
    defs.emplace(data.dir);
    ASSERT_TRUE(regions->is_valid() && defs->is_valid());
  }

  std::string describe(const SurveySummary& summary, bool with_member = true) const
  {
    try {
      return describe_survey(summary, *regions, *defs, with_member).raw();
    } catch (const Glib::ustring& thrown) {
      return "thrown: " + thrown.raw();
    }
  }

  DataSet data;
  std::optional<RegionInfo> regions;
  std::optional<DataDefs> defs;
};

} // namespace

TEST_F(DescribeSurvey, NamesWhatIsKnownInItsOrder)
{
  const struct {
    const char* why;
    SurveySummary summary;
    const char* expected;
  } cases[] = {
      {"everything",
       {"1234", "PNW", 1, "2021", 6, 30, 9, 31020003},
       "Member 1234 - Northwest: abundance - 2021-06-30 at 9 AM - Rosario Wall"},
      {"no member",
       {"", "PNW", 1, "2021", 6, 30, 9, 31020003},
       "Northwest: abundance - 2021-06-30 at 9 AM - Rosario Wall"},
      {"a type that is no longer offered",
       {"", "PNW", 4, "2021", 6, 30, 0, 0},
       "Northwest: old form - 2021-06-30"},
      {"no type: the subregion's name",
       {"", "PNW", -1, "2021", 6, 30, 0, 0},
       "Northwest - 2021-06-30"},
      {"no date", {"", "PNW", 1, "0000", 0, 0, 0, 0}, "Northwest: abundance - 0000-00-00"},
      {"no date and an empty year", {"", "PNW", 1, "", 0, 0, 0, 0}, "Northwest: abundance"},
      {"a month and an empty year",
       {"", "PNW", 1, "", 6, 0, 0, 0},
       "Northwest: abundance - -06-00"},
      {"a day and an empty year", {"", "PNW", 1, "", 0, 7, 0, 0}, "Northwest: abundance - -00-07"},
      {"no start", {"", "PNW", 1, "2021", 6, 30, -1, 0}, "Northwest: abundance - 2021-06-30"},
      {"a start of 0", {"", "PNW", 1, "2021", 6, 30, 0, 0}, "Northwest: abundance - 2021-06-30"},
      {"an unknown start",
       {"", "PNW", 1, "2021", 6, 30, 99, 0},
       "Northwest: abundance - 2021-06-30 at "},
      {"a partial zone",
       {"", "PNW", 1, "2021", 6, 30, 0, 3},
       "Northwest: abundance - 2021-06-30 - Washington"},
      {"an unknown zone",
       {"", "PNW", 1, "2021", 6, 30, 0, 77},
       "Northwest: abundance - 2021-06-30"},
      {"a zone without a name",
       {"", "PNW", 1, "2021", 6, 30, 0, 31020009},
       "Northwest: abundance - 2021-06-30"},
      {"a zone of another region",
       {"", "FLA", 6, "2021", 6, 30, 0, 31020003},
       "Florida: abundance - 2021-06-30"},
      {"plain words",
       {"<1&2>", "FLA", -1, "2021", 6, 30, 0, 0},
       "Member <1&2> - Florida & Gulf - 2021-06-30"},
  };
  for (const auto& c : cases)
    EXPECT_EQ(c.expected, describe(c.summary)) << c.why;
}

TEST_F(DescribeSurvey, OmitsTheMemberIfItIsShownElsewhere)
{
  EXPECT_EQ("Northwest: abundance - 2021-06-30",
            describe({"1234", "PNW", 1, "2021", 6, 30, 0, 0}, false));
}

TEST_F(DescribeSurvey, RefusesWhatTheDataLack)
{
  const struct {
    const char* why;
    SurveySummary summary;
    const char* expected;
  } cases[] = {
      {"unknown subregion", {"", "XXX", 1, "2021", 6, 30, 0, 0}, "thrown: Bad subregion"},
      {"no subregion", {"", "", 1, "2021", 6, 30, 0, 0}, "thrown: Bad subregion"},
      {"no type element", {"", "PNW", 0, "2021", 6, 30, 0, 0}, "thrown: Bad subtype 0"},
      {"a gap in the types", {"", "PNW", 7, "2021", 6, 30, 0, 0}, "thrown: Bad subtype 7"},
      {"a type beyond the table",
       {"", "PNW", 2147483647, "2021", 6, 30, 0, 0},
       "thrown: Bad subtype 2147483647"},
  };
  for (const auto& c : cases)
    EXPECT_EQ(c.expected, describe(c.summary)) << c.why;
  EXPECT_EQ(0U, regions->region_fish.count("XXX") + regions->subregion_regions.count("XXX"))
      << "the description does not change the tables";
}

TEST_F(DescribeSurvey, DescribesWithoutTheListOfStarts)
{
  data.file("data-definitions.csv", "group,value,label\nvisibility,1,Poor\n");
  load();
  EXPECT_EQ("Northwest: abundance - 2021-06-30 at ", describe({"", "PNW", 1, "2021", 6, 30, 9, 0}));
}

TEST_F(DescribeSurvey, ShortensTheTextsOfAFileToOneLine)
{
  const std::string name = " - Northwest: abundance - ";
  const std::string dots = "\u2026";
  std::string marks;
  for (int i = 0; i < 10'000; ++i)
    marks += "\u0301";
  const struct {
    const char* why;
    std::string text;
    std::string expected;
  } cases[] = {
      {"line feeds", "1\n\n2\r\t3", "1  2  3"},
      {"separators",
       "1\u2028"
       "2\u00853",
       "1 2 3"},
      {"a long word", std::string(60'000, 'x'), std::string(60, 'x') + dots},
      {"just short enough", std::string(60, 'x'), std::string(60, 'x')},
      {"combining characters", "e" + marks + "x", "e\u0301\u0301\u0301\u0301" + dots},
      {"accents", "Nu\u0301n\u0303ez", "Nu\u0301n\u0303ez"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ("Member " + c.expected + name + "2021-06-30",
              describe({c.text, "PNW", 1, "2021", 6, 30, 0, 0}))
        << c.why;
    EXPECT_EQ("Northwest: abundance - " + c.expected + "-06-30",
              describe({"", "PNW", 1, c.text, 6, 30, 0, 0}))
        << c.why;
  }
}

TEST_F(DescribeSurvey, ShortensTheTextsOfTheData)
{
  data.file("PAC-geog.csv", "geogid,name\n3,Washington\n31020003," + std::string(5000, 'z') + "\n");
  load();
  const Glib::ustring line = describe({"", "PNW", 1, "2021", 6, 30, 9, 31020003});
  EXPECT_EQ(301U, line.size());
  EXPECT_EQ("\u2026", line.substr(300));
}
