#include "data/abundance-choices.h"

#include <algorithm>
#include <map>

#include "cli/alike-names.h"
#include "cli/data-checks.h"
#include "cli/table-check.h"

namespace {

const char* const expected_headings[] = {"regioncode",     "subregioncode", "regionname",
                                         "subregionname",  "surveytypeid",  "surveytypename",
                                         "hasabundance",   "hasfish",       "hasinverts",
                                         "canhaveinverts", "visible",       nullptr};
enum Heading {
  REGIONCODE,
  SUBREGIONCODE,
  REGIONNAME,
  SUBREGIONNAME,
  SURVEYTYPEID,
  SURVEYTYPENAME,
  HASABUNDANCE,
  HASFISH,
  HASINVERTS,
  CANHAVEINVERTS,
  VISIBLE,
};

// Checks the survey types in region-info.csv.
class RegionCheck : public TableCheck
{
public:
  explicit RegionCheck(CheckedDataSet& the_set)
      : TableCheck(the_set, "region-info.csv", expected_headings)
  {
  }

private:
  void check_row() override;
  void check_end() override;
  void check_survey_type(int type);
  void check_code(Heading heading);
  void check_subregion();
  void check_flags();

  struct FirstRow {
    std::string region;
    std::string name;
    long line;
  };

  std::map<std::string, FirstRow> first_rows; // by subregion code
  AlikeNames subregion_names{"location", AlikeNames::Equal::FAULT};
  AlikeNames type_names{"survey type", AlikeNames::Equal::FAULT};
};

void RegionCheck::check_row()
{
  check_code(REGIONCODE);
  check_code(SUBREGIONCODE);
  check_subregion();
  check_flags();
  const auto type = id(SURVEYTYPEID);
  if (type)
    check_survey_type(*type);
}

// Names of data files and of surveys contain the codes.
void RegionCheck::check_code(Heading heading)
{
  const std::string& code = text(heading);
  const bool is_usable = std::all_of(
      code.begin(), code.end(), [](char c) { return g_ascii_isalnum(c) || c == '_' || c == '-'; });
  if (code.empty() || !is_usable) {
    fault(DataRule::CODE_UNUSABLE, std::string(expected_headings[heading]) + " " + quoted(code) +
                                       " does not consist of letters, digits, \"_\" and \"-\": "
                                       "the program may not find files, and users may not be "
                                       "able to save surveys");
  }
}

void RegionCheck::check_subregion()
{
  const auto [known, is_new] = first_rows.try_emplace(
      text(SUBREGIONCODE), FirstRow{text(REGIONCODE), text(SUBREGIONNAME), line()});
  if (is_new) {
    require_name(text(SUBREGIONNAME), "The location", quoted(text(SUBREGIONCODE)));
    subregion_names.add(*this, text(SUBREGIONNAME));
  } else if (known->second.region != text(REGIONCODE) ||
             known->second.name != text(SUBREGIONNAME)) {
    fault(DataRule::SUBREGION_INCONSISTENT,
          "The region or the name of " + quoted(text(SUBREGIONCODE)) + " differs from line " +
              std::to_string(known->second.line) + ": the program uses the first row");
  }
}

void RegionCheck::check_flags()
{
  for (const Heading heading : {HASABUNDANCE, HASFISH, HASINVERTS, CANHAVEINVERTS})
    flag(heading);
}

void RegionCheck::check_survey_type(int type)
{
  const std::string number_text = std::to_string(type);
  if (type == AbundanceChoices::presence_subtype) {
    fault(DataRule::SURVEY_TYPE_RESERVED,
          "The survey type " + number_text +
              " has a reserved number: it gets the abundance classes for the presence of "
              "invertebrates");
  }
  require_name(text(SURVEYTYPENAME), "The survey type", number_text);
  type_names.add(*this, text(SURVEYTYPENAME), text(SUBREGIONCODE));
  check_duplicate(set.survey_types.add(type, line()), "The survey type", number_text,
                  "users see it twice, with the name of this row");
  set.survey_type_rows[type] = {text(SUBREGIONCODE), text(REGIONCODE), flag(VISIBLE), line()};
  set.subregions[text(SUBREGIONCODE)].types.push_back(type);
}

// The first survey type of a subregion determines the subregion's properties, as in the program.
void RegionCheck::check_end()
{
  set.survey_types.is_complete = is_complete();
  for (auto& [code, subregion] : set.subregions) {
    subregion.region = set.survey_type_rows[subregion.types.front()].region;
    subregion.offered = std::any_of(subregion.types.begin(), subregion.types.end(),
                                    [&](int type) { return set.survey_type_rows[type].visible; });
    set.regions[subregion.region].is_named = true;
  }
  check_gaps(set.survey_types, "the survey type");
}

} // namespace

void check_regions(CheckedDataSet& set)
{
  RegionCheck(set).run();
}
