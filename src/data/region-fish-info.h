#pragma once

#include "core/ret-code.h"

#include <glibmm/ustring.h>

#include <cstdint>
#include <map>
#include <string>
#include <vector>

// The families, species and zones of one region.
class RegionFishInfo
{
public:
  struct Family {
    std::string id;
    Glib::ustring scientificname;
    Glib::ustring commonname;
  };
  struct Species {
    int speciesid = -1;                // -1: a gap in the numbering, to be skipped
    std::int8_t rarefishind = 0;       // rarity class; 1 and above are shaded
    std::uint8_t invertebratetype = 0; // 0 for a fish
    Glib::ustring scientificname;
    Glib::ustring commonname;
    Glib::ustring spanishname;
    std::string familyid; // "(empty)" where the file names none

    // Whether surveys note only that the animal is there, whatever their type:
    // its choices are those of AbundanceChoices::presence_subtype.
    bool is_presence_only() const { return invertebratetype == 2; }
  };

  // The readers of the three files; they live for the duration of init().
  class FamilyInfo;
  class SpeciesInfo;
  class GeogInfo;

  // Reads the three files of `region_code` in `dir`, which ends in a slash.
  // Result: RET_SUCCESS, or RET_FAILURE if any of them fails.
  RetCode init(const std::string& dir, const std::string& region_code);

  // The species of that id, null if the region has none: ids from a survey or
  // a view are not to be trusted.
  const Species* find_species(int id) const;

  std::vector<Glib::ustring> family_ids; // in file order; `families` can hold more
  std::vector<Species> species;          // by id, with gaps
  std::map<Glib::ustring, Family> families;
  std::map<int, Glib::ustring> geog_names; // zone names by zone id
  std::vector<int> geog_ids;               // in file order: parents before children
  std::string region;
  bool initialised = false;
  bool has_spanish = false; // the species file has a column of Spanish names
  std::int8_t max_rarefishind = 0;
};
