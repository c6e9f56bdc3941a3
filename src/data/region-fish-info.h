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
    int speciesid = -1;                // -1: a gap in the ids; skip it
    std::int8_t rarefishind = 0;       // rarity class; rows of class 1 and above are shaded
    std::uint8_t invertebratetype = 0; // 0 for a fish
    Glib::ustring scientificname;
    Glib::ustring commonname;
    Glib::ustring spanishname;
    std::string familyid; // "(empty)" if the file names none

    // Returns whether surveys of any type record only the presence of the animal. Its choices
    // are those of AbundanceChoices::presence_subtype.
    bool is_presence_only() const { return invertebratetype == 2; }
  };

  // The readers of the three files. init() uses them.
  class FamilyInfo;
  class SpeciesInfo;
  class GeogInfo;

  // Reads the three files of `region_code` in `dir`, which ends in a slash. Returns
  // RET_SUCCESS, or RET_FAILURE if one of them is invalid.
  RetCode init(const std::string& dir, const std::string& region_code);

  // Returns the species with that id, or null if the region has none. Accepts any id, because
  // ids of surveys and views may be wrong.
  const Species* find_species(int id) const;

  std::vector<Glib::ustring> family_ids; // in file order; `families` may have more
  std::vector<Species> species;          // by id, with gaps
  std::map<Glib::ustring, Family> families;
  std::map<int, Glib::ustring> geog_names; // zone names by zone id
  std::vector<int> geog_ids;               // in file order: parents before children
  std::string region;
  bool initialised = false;        // whether init() has succeeded
  bool has_spanish = false;        // whether the species file has a column of Spanish names
  std::int8_t max_rarefishind = 0; // the largest rarity class of a species
};
