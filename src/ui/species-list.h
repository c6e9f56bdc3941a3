#pragma once

#include "data/region-fish-info.h"
#include "data/species-views.h"

#include <vector>

// A species of a table, with the family under which the table shows it.
struct SpeciesListItem {
  const RegionFishInfo::Species* species; // these two belong to the reference data
  const RegionFishInfo::Family* family;
  bool in_view;

  // Returns whether this item comes first. Compares the common names of the families, then
  // those of the species, in the locale's order.
  bool operator<(const SpeciesListItem& other) const;
};

// The kinds of animals that the survey's type includes.
struct ShownKinds {
  bool fish = false;
  bool inverts = false;
};

// Sorts species like std::sort, but many times faster: it compares the names of a region only
// once, when its species are first sorted.
class SpeciesOrder
{
public:
  // REQUIRES: the species in `list` belong to `fish`, whose names do not change any more.
  void sort(std::vector<SpeciesListItem>& list, const RegionFishInfo& fish);

private:
  void take_names(const RegionFishInfo& fish);

  const RegionFishInfo* region = nullptr; // the region that `places` belongs to
  std::vector<int> places;                // the ranks of its species, by id
};

// Returns all species of the region that a survey can contain, sorted: its fish, and those of
// its invertebrates that are in the view.
std::vector<SpeciesListItem> all_species_list(RegionFishInfo& fish, const IdSet& view_set,
                                              ShownKinds shown, SpeciesOrder& order);

// Returns the species of the view in its own order and with its own families. Omits entries
// whose species the region does not have, and prints a line to standard output for each.
std::vector<SpeciesListItem> view_species_list(RegionFishInfo& fish,
                                               const std::vector<SpeciesViews::ViewSpecies>& view,
                                               ShownKinds shown);
