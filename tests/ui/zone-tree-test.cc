#include "data/zone-code.h"
#include "support/output.h"
#include "ui/zone-tree.h"

#include <gtest/gtest.h>

#include <sstream>

namespace {

struct Zone {
  int id;
  const char* name;
};

struct Place {
  const char* region = "CAR";
  const char* subregion = "FLA";
};

// Returns the rows as a text with one line for each, indented by two blanks for each level.
std::string tree(const std::vector<Zone>& zones, const Glib::ustring& search = "",
                 const Place& place = {})
{
  std::vector<int> ids;
  std::map<int, Glib::ustring> names;
  for (const auto& zone : zones) {
    ids.push_back(zone.id);
    names[zone.id] = zone.name;
  }
  std::ostringstream text;
  for (const auto& row : ZoneTree(ids, names, place.region, place.subregion).rows(search))
    text << std::string(2 * static_cast<std::size_t>(row.depth), ' ') << row.id << ": "
         << row.name->raw() << "\n";
  return text.str();
}

const std::vector<Zone> caribbean = {
    {1, "Southern Caribbean"},
    {1001, "Aruba"},
    {10010001, "Antilla Wreck"},
    {10010002, "Arashi Reef"},
    {1002, "Bonaire"},
    {10020001, "1000 Steps"},
    {2, "Florida"},
    {2001, "Florida Keys"},
    {20010001, "Molasses Reef"},
};

const std::vector<Zone> pacific = {
    {3, "Washington"}, {3102, "San Juan Islands"}, {31020003, "Rosario Wall"},
    {4, "California"}, {4010, "San Diego"},        {40100010, "La Jolla Cove"},
};

const std::map<int, Glib::ustring> names = {
    {3, "Washington"},         {31, "North Sound"},        {3102, "San Juan Islands"},
    {310200, "Lopez Island"},  {31020003, "Rosario Wall"}, {50010001, "Lone Rock"},
    {50020001, "Second Rock"}, {5002, "Lone District"},
};

} // namespace

TEST(ZoneAncestor, IsAShorterCodeThatTheOtherBeginsWith)
{
  const struct {
    const char* ancestor;
    const char* code;
    bool expected;
  } cases[] = {
      {"3", "3102", true},
      {"3102", "31020003", true},
      {"3102", "3102", false},
      {"3102", "3", false},
      {"3", "4010", false},
      {"310", "3012", false},
      {"31020003", "310200031", true},
  };
  for (const auto& c : cases)
    EXPECT_EQ(c.expected, is_zone_ancestor(c.ancestor, c.code)) << c.ancestor << " " << c.code;
}

TEST(ZoneOfSubregion, DividesOnlyThePacificAndByItsFirstDigit)
{
  const struct {
    const char* code;
    const char* region;
    const char* subregion;
    bool expected;
  } cases[] = {
      {"31020003", "PAC", "PNW", true},  {"40100010", "PAC", "PNW", false},
      {"31020003", "PAC", "CAL", false}, {"40100010", "PAC", "CAL", true},
      {"4", "PAC", "BAJA", true},        {"5", "PAC", "BAJA", false},
      {"40100010", "CAR", "PNW", true},  {"31020003", "CAR", "FLA", true},
      {"-4", "PAC", "PNW", true},        {"", "PAC", "CAL", false},
  };
  for (const auto& c : cases)
    EXPECT_EQ(c.expected, is_zone_of_subregion(c.code, c.region, c.subregion))
        << c.code << " " << c.region << " " << c.subregion;
}

TEST(ZoneTree, MakesEachZoneAChildOfTheOneWhoseCodeItExtends)
{
  EXPECT_EQ("1: Southern Caribbean\n"
            "  1001: Aruba\n"
            "    10010001: Antilla Wreck\n"
            "    10010002: Arashi Reef\n"
            "  1002: Bonaire\n"
            "    10020001: 1000 Steps\n"
            "2: Florida\n"
            "  2001: Florida Keys\n"
            "    20010001: Molasses Reef\n",
            tree(caribbean));
}

TEST(ZoneTree, IsEmptyWithoutZones)
{
  EXPECT_EQ("", tree({}));
  EXPECT_EQ("", tree({}, "reef"));
}

TEST(ZoneTree, MakesAZoneWithoutItsParentAChildOfTheNearestListedAncestor)
{
  EXPECT_EQ(
      "1: Southern Caribbean\n"
      "  10010001: Antilla Wreck\n"
      "20010001: Molasses Reef\n",
      tree({{1, "Southern Caribbean"}, {10010001, "Antilla Wreck"}, {20010001, "Molasses Reef"}}));
}

TEST(ZoneTree, IsFlatIfTheFileIsSortedByNumber)
{
  EXPECT_EQ("1: Southern Caribbean\n"
            "2: Florida\n"
            "1001: Aruba\n"
            "2001: Florida Keys\n"
            "10010001: Antilla Wreck\n",
            tree({{1, "Southern Caribbean"},
                  {2, "Florida"},
                  {1001, "Aruba"},
                  {2001, "Florida Keys"},
                  {10010001, "Antilla Wreck"}}));
}

TEST(ZoneTree, TreatsACompleteZoneAsALeaf)
{
  // A longer code belongs to the district, not to the zone that it extends.
  EXPECT_EQ("1001: Aruba\n"
            "  10010001: Antilla Wreck\n"
            "  100100012: Antilla Stern\n",
            tree({{1001, "Aruba"}, {10010001, "Antilla Wreck"}, {100100012, "Antilla Stern"}}));
}

TEST(ZoneTree, ShowsASevenDigitZoneAsALevel)
{
  EXPECT_EQ("1001001: Arashi\n  10010012: Arashi Reef\n",
            tree({{1001001, "Arashi"}, {10010012, "Arashi Reef"}}));
}

TEST(ZoneTree, ListsARepeatedZoneTwiceOnTheSameLevel)
{
  EXPECT_EQ("1001: Aruba\n1001: Aruba\n  10010001: Antilla Wreck\n",
            tree({{1001, "Aruba"}, {1001, "Aruba"}, {10010001, "Antilla Wreck"}}));
}

TEST(ZoneTree, AcceptsNumbersThatAreNotCodes)
{
  EXPECT_EQ(
      "0: No number\n-5: Below zero\n  -51: Further below\n2147483647: Largest\n",
      tree(
          {{0, "No number"}, {-5, "Below zero"}, {-51, "Further below"}, {2147483647, "Largest"}}));
}

TEST(ZoneTree, ShowsAZoneThatHasNoName)
{
  const auto rows = ZoneTree({7}, {}, "CAR", "FLA").rows("");
  ASSERT_EQ(1U, rows.size());
  EXPECT_EQ(7, rows[0].id);
  EXPECT_EQ("", *rows[0].name);
}

TEST(ZoneTree, DividesThePacificBetweenItsSubregions)
{
  EXPECT_EQ("3: Washington\n  3102: San Juan Islands\n    31020003: Rosario Wall\n",
            tree(pacific, "", {"PAC", "PNW"}));
  EXPECT_EQ("4: California\n  4010: San Diego\n    40100010: La Jolla Cove\n",
            tree(pacific, "", {"PAC", "CAL"}));
  EXPECT_EQ("4: California\n  4010: San Diego\n    40100010: La Jolla Cove\n",
            tree(pacific, "", {"PAC", "BAJA"}));
}

TEST(ZoneTree, ClosesAllLevelsAtAZoneOfTheOtherSubregion)
{
  EXPECT_EQ(
      "3: Washington\n3102: San Juan Islands\n",
      tree({{3, "Washington"}, {4, "California"}, {3102, "San Juan Islands"}}, "", {"PAC", "PNW"}));
}

TEST(ZoneSearch, ShowsAMatchBelowAncestorsThatDoNotMatch)
{
  EXPECT_EQ("1: Southern Caribbean\n"
            "  1001: Aruba\n"
            "    10010001: Antilla Wreck\n",
            tree(caribbean, "antilla"));
}

TEST(ZoneSearch, ShowsACommonAncestorOnce)
{
  EXPECT_EQ("1: Southern Caribbean\n"
            "  1001: Aruba\n"
            "    10010002: Arashi Reef\n"
            "2: Florida\n"
            "  2001: Florida Keys\n"
            "    20010001: Molasses Reef\n",
            tree(caribbean, "reef"));
}

TEST(ZoneSearch, OmitsTheChildrenOfAMatchUnlessTheyMatch)
{
  EXPECT_EQ("1: Southern Caribbean\n  1001: Aruba\n", tree(caribbean, "aruba"));
  EXPECT_EQ("2: Florida\n  2001: Florida Keys\n", tree(caribbean, "florida"));
}

TEST(ZoneSearch, FindsNothingIfNothingMatches)
{
  EXPECT_EQ("", tree(caribbean, "atlantis"));
}

TEST(ZoneSearch, IgnoresCaseAndSurroundingBlanks)
{
  EXPECT_EQ(tree(caribbean, "antilla"), tree(caribbean, "  ANTilla "));
  EXPECT_EQ(tree(caribbean), tree(caribbean, "   "));
  EXPECT_EQ("1: Bahía Norte\n", tree({{1, "Bahía Norte"}}, "BAHÍA"));
  EXPECT_EQ("1: A  b\n", tree({{1, "A  b"}, {2, "A b"}}, "a  b"));
}

TEST(ZoneSearch, TreatsTheSearchAsPlainText)
{
  EXPECT_EQ("", tree(caribbean, ".*"));
  EXPECT_EQ("1: Rock (north)\n", tree({{1, "Rock (north)"}, {2, "Rock"}}, "(n"));
}

TEST(ZoneSearch, IncludesACompleteZoneForALongerCodeThatMatches)
{
  EXPECT_EQ("10010001: Antilla Wreck\n  100100012: Antilla Stern\n",
            tree({{10010001, "Antilla Wreck"}, {100100012, "Antilla Stern"}}, "stern"));
}

TEST(ZoneSearch, SearchesOnlyTheZonesOfTheSubregion)
{
  EXPECT_EQ("", tree(pacific, "cove", {"PAC", "PNW"}));
  EXPECT_EQ("4: California\n  4010: San Diego\n    40100010: La Jolla Cove\n",
            tree(pacific, "cove", {"PAC", "CAL"}));
}

TEST(ZoneTrace, NamesEachZoneAtLevelNine)
{
  const auto build = [] { tree(pacific, "cove", {"PAC", "PNW"}); };
  EXPECT_EQ("", output_of(8, build));
  EXPECT_EQ("3: Washington\n3102: San Juan Islands\n31020003: Rosario Wall\n"
            "4: California\n4010: San Diego\n40100010: La Jolla Cove\n",
            output_of(9, build));
}

TEST(FullZoneName, PutsTheFirstTwoLevelsBeforeTheZone)
{
  const struct {
    const char* why;
    const char* code;
    const char* expected;
  } cases[] = {
      {"a site", "31020003", "Washington, San Juan Islands, Rosario Wall"},
      {"a first level", "3", "Washington"},
      {"a level between", "31", "Washington, North Sound"},
      {"a second level", "3102", "Washington, San Juan Islands"},
      {"a level below the second", "310200", "Washington, San Juan Islands, Lopez Island"},
      {"no listed ancestor", "50010001", "Lone Rock"},
      {"the second level alone", "50020001", "Lone District, Second Rock"},
      {"an unknown code", "99999999", ""},
      {"no code", "", ""},
      {"no number", "reef", ""},
      {"letters after the number, which count towards the length", "3x", "Washington, Washington"},
      {"letters after a site", "31020003x", "Washington, San Juan Islands, Rosario Wall"},
      {"a number that is too large", "99999999999999999999", ""},
      {"a letter of two bytes", "3é", "Washington, Washington"},
  };
  for (const auto& c : cases)
    EXPECT_EQ(c.expected, full_zone_name(c.code, names)) << c.why;
}
