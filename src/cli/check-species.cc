#include <cstdint>
#include <limits>

#include "cli/alike-names.h"
#include "cli/data-checks.h"
#include "cli/name-markup.h"
#include "cli/table-check.h"

namespace {

const char* const expected_headings[] = {"speciesid", "scientificname",   "commonname",
                                         "familyid",  "invertebratetype", "rarefishind",
                                         nullptr};
enum Heading { SPECIESID, SCIENTIFICNAME, COMMONNAME, FAMILYID, INVERTEBRATETYPE, RAREFISHIND };

// Checks the species of a region.
class SpeciesCheck : public TableCheck
{
public:
  SpeciesCheck(CheckedDataSet& the_set, const std::string& the_region)
      : TableCheck(the_set, the_region + "-species-info.csv", expected_headings),
        region(the_set.regions[the_region])
  {
  }

private:
  void check_row() override;
  void check_end() override;
  void check_id(const std::string& id_text, int species);
  void check_names(const std::string& id_text);
  void check_family(const std::string& id_text, bool is_fish);
  bool check_invertebrate_type(); // returns whether the species is a fish
  void check_rarity();

  CheckedDataSet::Region& region;
  AlikeNames common_names{"species", AlikeNames::Equal::FINE};
};

void SpeciesCheck::check_row()
{
  const bool is_fish = check_invertebrate_type();
  check_rarity();
  const auto species = id(SPECIESID);
  if (!species)
    return;
  const std::string id_text = std::to_string(*species);
  check_id(id_text, *species);
  check_names(id_text);
  check_family(id_text, is_fish);
}

void SpeciesCheck::check_id(const std::string& id_text, int species)
{
  if (species == 0)
    fault(DataRule::SPECIES_ID_ZERO, "Users cannot mark the species 0");
  check_duplicate(region.species.add(species, line()), "The species", id_text,
                  "users see only this row");
}

void SpeciesCheck::check_names(const std::string& id_text)
{
  const std::string& spanish = optional_text("spanishname");
  if (text(SCIENTIFICNAME).empty())
    require_name(text(COMMONNAME), "The species", id_text);
  common_names.add(*this, text(COMMONNAME));
  check_name_markup(*this, text(SCIENTIFICNAME));
  check_name_markup(*this, text(COMMONNAME));
  check_name_markup(*this, spanish);
}

void SpeciesCheck::check_family(const std::string& id_text, bool is_fish)
{
  const std::string& family = text(FAMILYID);
  if (family.empty()) {
    if (is_fish)
      fault(DataRule::FAMILY_MISSING,
            "The species " + id_text + " has no family: it appears under \"Unnamed family\"");
  } else if (!region.families.may_have(family)) {
    fault(DataRule::FAMILY_UNKNOWN, "The species " + id_text + " belongs to the family " +
                                        quoted(family) +
                                        ", which is not defined: it appears under \"Unnamed "
                                        "family\"");
  }
}

bool SpeciesCheck::check_invertebrate_type()
{
  const auto type = number(INVERTEBRATETYPE, 0, std::numeric_limits<std::uint8_t>::max());
  if (type && *type > 2) {
    fault(DataRule::INVERTEBRATE_TYPE, "invertebratetype " + std::to_string(*type) +
                                           " is not 0, 1 or 2: the species counts as an "
                                           "invertebrate of type 1");
  }
  return type && *type == 0;
}

void SpeciesCheck::check_rarity()
{
  const auto rarity = number(RAREFISHIND, std::numeric_limits<std::int8_t>::min(),
                             std::numeric_limits<std::int8_t>::max());
  if (rarity && (*rarity < 0 || *rarity > 2)) {
    fault(DataRule::RARITY, "rarefishind " + std::to_string(*rarity) +
                                " is not 0, 1 or 2: the program shades the species like one of the "
                                "nearest class");
  }
}

void SpeciesCheck::check_end()
{
  region.species.is_complete = is_complete();
  check_gaps(region.species, "the species");
}

} // namespace

void check_species(CheckedDataSet& set, const std::string& region)
{
  SpeciesCheck(set, region).run();
}
