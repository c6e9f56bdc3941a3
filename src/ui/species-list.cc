#include "ui/species-list.h"

#include "core/c-resource.h"
#include "core/report.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <unordered_map>

namespace {

// The families of a region by id. A look-up in the region's own map compares by
// the locale's rules, which is slow; here each id goes that way once. An id that
// the region lacks gives an empty family.
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

// Names for the locale's order: texts whose bytes compare as the names do. One is made
// for each name, since comparing names themselves makes two for each comparison.
class SortKeys
{
public:
  explicit SortKeys(const std::vector<SpeciesListItem>& list)
  {
    entries.reserve(list.size());
    for (const auto& item : list)
      entries.push_back({family_key(item.family), key_of(item.species->commonname), &item});
  }

  std::vector<SpeciesListItem> sorted()
  {
    std::sort(entries.begin(), entries.end());
    std::vector<SpeciesListItem> list;
    list.reserve(entries.size());
    for (const auto& entry : entries)
      list.push_back(*entry.item);
    return list;
  }

private:
  using Key = GMemory<char>;

  // As SpeciesListItem::operator<.
  struct Entry {
    const char* family;
    Key species;
    const SpeciesListItem* item;

    bool operator<(const Entry& other) const
    {
      const int families = family == other.family ? 0 : std::strcmp(family, other.family);
      return families != 0 ? families < 0 : std::strcmp(species.get(), other.species.get()) < 0;
    }
  };

  static Key key_of(const Glib::ustring& name)
  {
    return Key(g_utf8_collate_key(name.c_str(), static_cast<gssize>(name.bytes())));
  }

  const char* family_key(const RegionFishInfo::Family* family)
  {
    Key& key = family_keys[family];
    if (!key)
      key = key_of(family->commonname);
    return key.get();
  }

  std::unordered_map<const RegionFishInfo::Family*, Key> family_keys;
  std::vector<Entry> entries;
};

} // namespace

bool SpeciesListItem::operator<(const SpeciesListItem& other) const
{
  const int families = family == other.family
                           ? 0 // the most common case by far, and comparing is slow
                           : family->commonname.compare(other.family->commonname);
  if (families != 0)
    return families < 0;
  return species->commonname.compare(other.species->commonname) < 0;
}

void sort_species(std::vector<SpeciesListItem>& list)
{
  list = SortKeys(list).sorted();
}

std::vector<SpeciesListItem> all_species_list(RegionFishInfo& fish, const IdSet& view_set,
                                              ShownKinds shown)
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
  sort_species(list);
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
      printf("Warning: region %s has no species %d, which a view lists\n", fish.region.c_str(),
             view[i].speciesid);
    } else if (is_shown(*species, shown)) {
      list.push_back({species, families.find(view[i].familyid), true});
    }
  }
  trace_list("listed species_list has:", list);
  return list;
}
