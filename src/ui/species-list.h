#pragma once

#include "data/region-fish-info.h"
#include "data/species-views.h"

#include <vector>

// One species on its way into a table, with the family to show it under.
struct SpeciesListItem {
  const RegionFishInfo::Species* species; // these two belong to the reference data
  const RegionFishInfo::Family* family;
  bool in_view;

  // By the family's and then the species' common name, as the locale sorts.
  bool operator<(const SpeciesListItem& other) const;
};

// Whether the survey's type takes this kind of animal.
struct ShownKinds {
  bool fish = false;
  bool inverts = false;
};

// Sorts species as std::sort does, many times faster: the names of a region are compared
// once, when its species are first sorted.
class SpeciesOrder
{
public:
  // The species in `list` belong to `fish`, whose names do not change any more.
  void sort(std::vector<SpeciesListItem>& list, const RegionFishInfo& fish);

private:
  void take_names(const RegionFishInfo& fish);

  const RegionFishInfo* region = nullptr; // that the names were taken from
  std::vector<int> places;                // of its species among each other, by id
};

// All of the region's species that a survey can hold, sorted: its fish, and of
// its invertebrates those of the view.
std::vector<SpeciesListItem> all_species_list(RegionFishInfo& fish, const IdSet& view_set,
                                              ShownKinds shown, SpeciesOrder& order);

// The species of the view in its own order and under its own families. Entries
// whose species the region does not have are left out, with a line on standard
// output.
std::vector<SpeciesListItem> view_species_list(RegionFishInfo& fish,
                                               const std::vector<SpeciesViews::ViewSpecies>& view,
                                               ShownKinds shown);
