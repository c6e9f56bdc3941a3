#include <map>

#include "cli/alike-names.h"
#include "cli/data-checks.h"
#include "cli/name-markup.h"
#include "cli/numbering-gaps.h"
#include "cli/table-check.h"

namespace {

// Checks the habitats in habitat.csv.
class HabitatCheck : public TableCheck
{
public:
  explicit HabitatCheck(CheckedDataSet& the_set)
      : TableCheck(the_set, "habitat.csv", expected_headings)
  {
  }

private:
  void check_row() override;
  void check_end() override;

  static constexpr const char* expected_headings[] = {"habitatid", "habitatname", "habitatdescr",
                                                      nullptr};
  enum Heading { HABITATID, HABITATNAME, HABITATDESCR };

  AlikeNames names{"habitat", AlikeNames::Equal::FAULT};
};

void HabitatCheck::check_row()
{
  const auto habitat = id(HABITATID);
  if (!habitat)
    return;
  const std::string id_text = std::to_string(*habitat);
  require_name(text(HABITATNAME), "The habitat", id_text);
  names.add(*this, text(HABITATNAME));
  check_text_markup(*this, text(HABITATNAME));
  check_text_markup(*this, text(HABITATDESCR));
  check_duplicate(set.habitats.add(*habitat, line()), "The habitat", id_text,
                  "users see only this row");
}

void HabitatCheck::check_end()
{
  set.habitats.is_complete = is_complete();
  check_gaps(set.habitats, "the habitat");
}

// Checks which habitats the regions offer, in habitatregion.csv.
class RegionHabitatCheck : public TableCheck
{
public:
  explicit RegionHabitatCheck(CheckedDataSet& the_set)
      : TableCheck(the_set, "habitatregion.csv", expected_headings)
  {
  }

private:
  void check_row() override;
  void check_end() override;
  void check_reference(const std::string& region, int habitat);

  static constexpr const char* expected_headings[] = {"regioncode", "habitat", "habitatid",
                                                      nullptr};
  enum Heading { REGIONCODE, HABITAT, HABITATID };

  struct Region {
    NumberedIds codes;
    NumberedIds habitats;
  };

  std::map<std::string, Region> regions;
  NumberingGaps gaps;
};

void RegionHabitatCheck::check_row()
{
  const std::string& code = text(REGIONCODE);
  const auto own_code = id(HABITAT);
  const auto habitat = id(HABITATID);
  if (!own_code || !habitat || !gaps.allow(*this, code, *own_code))
    return;
  check_duplicate(regions[code].codes.add(*own_code, line()), "The habitat code",
                  std::to_string(*own_code) + " of " + quoted(code), "users see only this row");
  check_duplicate(regions[code].habitats.add(*habitat, line()), "The habitat",
                  std::to_string(*habitat) + " of " + quoted(code), "users see it twice");
  check_reference(code, *habitat);
}

void RegionHabitatCheck::check_reference(const std::string& region, int habitat)
{
  if (!set.may_have_region(region))
    fault(DataRule::REGION_UNKNOWN,
          "The region " + quoted(region) + " does not exist: nobody sees this habitat");
  if (!set.habitats.may_have(habitat))
    fault(DataRule::HABITAT_UNKNOWN,
          "The habitat " + std::to_string(habitat) + " is not defined: users cannot choose it");
}

void RegionHabitatCheck::check_end()
{
  if (!is_complete() || !set.survey_types.is_complete)
    return;
  for (const auto& [code, region] : set.regions) {
    if (region.is_named && regions.count(code) == 0) {
      file_fault(DataRule::HABITATS_MISSING,
                 "The region " + quoted(code) +
                     " has no habitats: the box of habitats stays empty");
    }
  }
}

} // namespace

void check_habitats(CheckedDataSet& set)
{
  HabitatCheck(set).run();
}

void check_region_habitats(CheckedDataSet& set)
{
  RegionHabitatCheck(set).run();
}
