#include "ui/species-list.h"

#include "core/c-resource.h"
#include "core/report.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <tuple>
#include <unordered_map>

namespace {

// Looks up the families of a region by id. The region's own map compares by the locale's
// rules, which is slow; this class looks up each id there once. It returns an empty family
// for an id that the region lacks.
class FamilyLookup
{
public:
  explicit FamilyLookup(RegionFishInfo& the_fish) : fish(the_fish) {}

  const RegionFishInfo::Family* find(const std::string& id)
  {
    auto& family = known[id];
    if (!family)
      family = &fish.families[id];
    return family;
  }

private:
  RegionFishInfo& fish;
  std::unordered_map<std::string, const RegionFishInfo::Family*> known;
};

bool is_shown(const RegionFishInfo::Species& species, ShownKinds shown)
{
  return species.invertebratetype != 0 ? shown.inverts : shown.fish;
}

void trace_item(const char* lead, const SpeciesListItem& item)
{
  printf("%s%d %s (family %s)\n", lead, item.species->speciesid, item.species->commonname.c_str(),
         item.family->commonname.c_str());
}

void trace_list(const char* heading, const std::vector<SpeciesListItem>& list)
{
  if (debug_level < 30)
    return;
  puts(heading);
  for (const auto& item : list)
    trace_item("    ", item);
}

// Returns the rank of each name in the locale's order; equal names have the same rank. Sorts
// by collation keys, whose bytes compare like the names. It creates one key for each name; a
// comparison of names would create two keys each time.
std::vector<int> places_of(const std::vector<const Glib::ustring*>& names)
{
  struct Keyed {
    GMemory<char> key;
    std::size_t index;
  };
  std::vector<Keyed> sorted;
  sorted.reserve(names.size());
  for (std::size_t i = 0; i < names.size(); ++i)
    sorted.push_back({GMemory<char>(g_utf8_collate_key(names[i]->c_str(), -1)), i});
  std::sort(sorted.begin(), sorted.end(), [](const Keyed& one, const Keyed& other) {
    return std::strcmp(one.key.get(), other.key.get()) < 0;
  });

  std::vector<int> places(names.size());
  int place = 0;
  for (std::size_t i = 0; i < sorted.size(); ++i) {
    place += i > 0 && std::strcmp(sorted[i - 1].key.get(), sorted[i].key.get()) != 0;
    places[sorted[i].index] = place;
  }
  return places;
}

std::unordered_map<const RegionFishInfo::Family*, int>
family_places(const std::vector<SpeciesListItem>& list)
{
  std::unordered_map<const RegionFishInfo::Family*, int> places;
  std::vector<const Glib::ustring*> names;
  for (const auto& item : list)
    if (places.emplace(item.family, static_cast<int>(names.size())).second)
      names.push_back(&item.family->commonname);
  const std::vector<int> sorted = places_of(names);
  for (auto& [family, place] : places)
    place = sorted[static_cast<std::size_t>(place)];
  return places;
}

} // namespace

bool SpeciesListItem::operator<(const SpeciesListItem& other) const
{
  const int families = family == other.family
                           ? 0 // by far the most common case; the comparison is slow
                           : family->commonname.compare(other.family->commonname);
  if (families != 0)
    return families < 0;
  return species->commonname.compare(other.species->commonname) < 0;
}

// Uses the same order as SpeciesListItem::operator<.
void SpeciesOrder::sort(std::vector<SpeciesListItem>& list, const RegionFishInfo& fish)
{
  take_names(fish);
  struct Entry {
    int family;
    int species;
    SpeciesListItem item;

    bool operator<(const Entry& other) const
    {
      return std::tie(family, species) < std::tie(other.family, other.species);
    }
  };
  const auto families = family_places(list);
  std::vector<Entry> entries;
  entries.reserve(list.size());
  for (const auto& item : list) {
    const auto index = static_cast<std::size_t>(item.species - fish.species.data());
    entries.push_back({families.at(item.family), places[index], item});
  }
  std::sort(entries.begin(), entries.end());
  std::transform(entries.begin(), entries.end(), list.begin(),
                 [](const Entry& entry) { return entry.item; });
}

void SpeciesOrder::take_names(const RegionFishInfo& fish)
{
  if (region == &fish && places.size() == fish.species.size())
    return;
  region = &fish;
  std::vector<const Glib::ustring*> names;
  names.reserve(fish.species.size());
  for (const auto& species : fish.species)
    names.push_back(&species.commonname);
  places = places_of(names);
}

std::vector<SpeciesListItem> all_species_list(RegionFishInfo& fish, const IdSet& view_set,
                                              ShownKinds shown, SpeciesOrder& order)
{
  FamilyLookup families(fish);
  std::vector<SpeciesListItem> list;
  list.reserve(fish.species.size());
  for (const auto& species : fish.species) {
    if (species.speciesid < 0 || !is_shown(species, shown))
      continue;
    const bool in_view = view_set.count(species.speciesid) != 0;
    if (species.invertebratetype != 0 && !in_view)
      continue;
    list.push_back({&species, families.find(species.familyid), in_view});
    if (debug_level >= 40)
      trace_item("unlisted: ", list.back());
  }
  order.sort(list, fish);
  trace_list("post-sort, unlisted species_list has:", list);
  return list;
}

std::vector<SpeciesListItem> view_species_list(RegionFishInfo& fish,
                                               const std::vector<SpeciesViews::ViewSpecies>& view,
                                               ShownKinds shown)
{
  FamilyLookup families(fish);
  std::vector<SpeciesListItem> list;
  list.reserve(view.size());
  for (std::size_t i = 0; i < view.size(); ++i) {
    const auto* species = fish.find_species(view[i].speciesid);
    if (debug_level >= 3)
      printf("%u: %d (%s) %s\n", static_cast<unsigned int>(i), view[i].speciesid,
             species ? species->commonname.c_str() : "", view[i].familyid.c_str());
    if (!species) {
      if (debug_level >= -1)
        printf("Warning: region %s has no species %d, which a view lists\n", fish.region.c_str(),
               view[i].speciesid);
    } else if (is_shown(*species, shown)) {
      list.push_back({species, families.find(view[i].familyid), true});
    }
  }
  trace_list("listed species_list has:", list);
  return list;
}
