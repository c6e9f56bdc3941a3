#include "cli/data-diff.h"

#include "data/data-file-info.h"
#include "data/reference-data.h"
#include "data/region-info.h"
#include "data/species-views.h"

#include <algorithm>
#include <set>
#include <utility>

#include "cli/data-things.h"
#include "cli/row-lines.h"
#include "cli/similar-names.h"

namespace {

using ThingIndex = std::unordered_map<std::string, const Thing*>;
using NameIndex = std::unordered_map<std::string, std::set<std::string>>;

ThingIndex index_by_key(const std::vector<Thing>& things)
{
  ThingIndex index;
  for (const Thing& thing : things)
    index[thing.key] = &thing;
  return index;
}

std::string scoped_name(const Thing& thing)
{
  return thing.scope + '\n' + compared_name(thing.name);
}

// Returns the keys of things by scope and name.
NameIndex index_by_name(const std::vector<Thing>& things)
{
  NameIndex index;
  for (const Thing& thing : things)
    index[scoped_name(thing)].insert(thing.key);
  return index;
}

bool is_name_of_another(const Thing& thing, const NameIndex& names, const Thing& owner)
{
  const auto keys = names.find(scoped_name(thing));
  return keys != names.end() && !(keys->second.size() == 1 && keys->second.count(owner.key) == 1);
}

std::string with_second_name(const Thing& thing)
{
  return thing.second_name.empty() ? thing.name : thing.name + " (" + thing.second_name + ")";
}

// Returns a text such as "Species 12 of region PAC".
std::string subject(const ThingKind& kind, const Thing& thing)
{
  return std::string(kind.noun) + ' ' + thing.id;
}

std::string quoted(const Thing& thing)
{
  return '"' + with_second_name(thing) + '"';
}

std::string named_subject(const ThingKind& kind, const Thing& thing)
{
  return subject(kind, thing) + (thing.name.empty() ? "" : ", " + quoted(thing) + ",");
}

// Returns the name of a thing, with its context if that has changed.
std::string meaning(const Thing& thing, bool with_context)
{
  return quoted(thing) + (with_context ? ", " + thing.context : "");
}

// The directory of a set and the lines of its rows.
struct Place {
  explicit Place(const std::string& directory) : dir(directory), lines(directory) {}

  const std::string dir;
  RowLines lines;
};

struct Places {
  Place old_set;
  Place new_set;
};

// The comparison of all things of one kind.
class KindDiff
{
public:
  KindDiff(const ThingList& old_list, const ThingList& new_list, Places& the_places, DataDiff& diff)
      : kind(*old_list.kind),
        old_names(index_by_name(old_list.things)),
        new_names(index_by_name(new_list.things)),
        places(the_places),
        result(diff)
  {
  }

  void add_removed(const Thing& thing)
  {
    if (has(ThingKind::ONLY_MEANING))
      return;
    report(Severity::warning, "removed", thing, places.old_set,
           named_subject(kind, thing) + " is gone. " + kind.when_removed);
    result.harms[thing.key] = named_subject(kind, thing) + " is gone";
  }

  void add_new(const Thing& thing)
  {
    if (!has(ThingKind::ONLY_MEANING))
      report(Severity::hint, "added", thing, places.new_set,
             named_subject(kind, thing) + " is new");
  }

  void compare(const Thing& before, const Thing& after)
  {
    if (means_another(before, after))
      return add_changed_meaning(before, after);
    if (with_second_name(before) != with_second_name(after))
      add_renamed(before, after);
    if (before.detail != after.detail && !has(ThingKind::ONLY_MEANING))
      report(Severity::hint, "changed", after, places.new_set,
             named_subject(kind, after) + " was: " + before.detail + "; is now: " + after.detail);
  }

private:
  bool has(ThingKind::Trait trait) const { return (kind.traits & trait) != 0; }

  // Returns whether an id now belongs to another thing. An unchanged name means the same
  // thing. If another id has the old name or had the new name, the ids have been reassigned.
  bool means_another(const Thing& before, const Thing& after) const
  {
    if (before.context != after.context)
      return true;
    if (has(ThingKind::FIXED_NAME))
      return before.name != after.name;
    if (compared_name(before.name) == compared_name(after.name))
      return false;
    if (is_name_of_another(after, old_names, before) ||
        is_name_of_another(before, new_names, after))
      return true;
    // Scientific names of different species can differ in only two letters.
    if (!before.second_name.empty() || !after.second_name.empty())
      return compared_name(before.second_name) != compared_name(after.second_name);
    return !are_similar_names(before.name, after.name);
  }

  void add_changed_meaning(const Thing& before, const Thing& after)
  {
    const bool with_context = before.context != after.context;
    const std::string change = subject(kind, after) + " was " + meaning(before, with_context) +
                               ", and is now " + meaning(after, with_context);
    add("id-changed-meaning", Severity::error, after, places.new_set,
        change + ". Saved surveys that contain it mean something else");
    result.harms[after.key] = change;
  }

  // A new scientific name with an unchanged common name needs a review.
  void add_renamed(const Thing& before, const Thing& after)
  {
    const bool is_reclassified =
        compared_name(before.name) != compared_name(after.name) && !after.second_name.empty();
    report(is_reclassified ? Severity::warning : Severity::hint, "renamed", after, places.new_set,
           subject(kind, after) + " was called " + quoted(before) + " and is now called " +
               quoted(after) +
               (is_reclassified ? ". Make sure that this is the same species" : ""));
  }

  void report(Severity severity, const char* what, const Thing& thing, Place& place,
              const std::string& consequence)
  {
    add(std::string(kind.rule) + '-' + what, severity, thing, place, consequence);
  }

  void add(const std::string& rule, Severity severity, const Thing& thing, Place& place,
           const std::string& consequence)
  {
    result.findings.push_back({place.dir + thing.file,
                               place.lines.find(thing.file, kind.headings, thing.row), rule,
                               severity, consequence});
  }

  const ThingKind& kind;
  const NameIndex old_names;
  const NameIndex new_names;
  Places& places;
  DataDiff& result;
};

// Removes the things of regions that the other set lacks. One finding reports such a region.
ThingList of_common_regions(ThingList list, const RegionInfo& other)
{
  if ((list.kind->traits & ThingKind::OF_REGION) == 0)
    return list;
  const auto is_lacking = [&](const Thing& thing) {
    return other.region_fish.count(thing.scope) == 0;
  };
  auto& things = list.things;
  things.erase(std::remove_if(things.begin(), things.end(), is_lacking), things.end());
  return list;
}

void compare_lists(const ThingList& old_list, const ThingList& new_list, Places& places,
                   DataDiff& diff)
{
  const ThingIndex old_things = index_by_key(old_list.things);
  const ThingIndex new_things = index_by_key(new_list.things);
  KindDiff kind_diff(old_list, new_list, places, diff);
  for (const Thing& thing : old_list.things) {
    const auto after = new_things.find(thing.key);
    if (after == new_things.end())
      kind_diff.add_removed(thing);
    else
      kind_diff.compare(thing, *after->second);
  }
  for (const Thing& thing : new_list.things)
    if (old_things.count(thing.key) == 0)
      kind_diff.add_new(thing);
}

void compare_timestamps(const DataFileInfo& before, const DataFileInfo& after,
                        const std::string& new_dir, DataDiff& diff)
{
  if (after.timestamp > before.timestamp)
    return;
  diff.findings.push_back({new_dir + DataFileInfo::get_filename(), std::nullopt,
                           "timestamp-not-newer", Severity::warning,
                           "The timestamp " + after.timestamp + " is not above " +
                               before.timestamp +
                               ". Members who have the old set do not get the new one"});
}

std::set<int> species_of(const SpeciesViews& views, int view)
{
  std::set<int> ids;
  for (const auto& species : views.species_of(view))
    ids.insert(species.speciesid);
  return ids;
}

std::size_t count_missing(const std::set<int>& ids, const std::set<int>& in)
{
  return static_cast<std::size_t>(
      std::count_if(ids.begin(), ids.end(), [&](int id) { return in.count(id) == 0; }));
}

// Compares the species of the views that both sets have.
void compare_view_lists(const ReferenceData& old_data, const ReferenceData& new_data,
                        const std::string& new_dir, DataDiff& diff)
{
  for (const auto& [code, subregion] : new_data.region_info->subregions) {
    for (const auto& view : subregion.views) {
      const std::set<int> before = species_of(*old_data.species_views, view.viewid);
      const std::set<int> after = species_of(*new_data.species_views, view.viewid);
      const std::size_t gained = count_missing(after, before);
      const std::size_t lost = count_missing(before, after);
      if (!before.empty() && gained + lost > 0) {
        diff.findings.push_back(
            {new_dir + "species-views.csv", std::nullopt, "view-species-changed", Severity::hint,
             "Species view " + std::to_string(view.viewid) + ", \"" + view.viewname.raw() +
                 "\" of location " + code.raw() + ", gains " + std::to_string(gained) +
                 " species and loses " + std::to_string(lost)});
      }
    }
  }
}

} // namespace

DataDiff compare_data_sets(const ReferenceData& old_data, const std::string& old_dir,
                           const ReferenceData& new_data, const std::string& new_dir)
{
  DataDiff diff;
  Places places{Place(old_dir), Place(new_dir)};
  compare_timestamps(*old_data.data_file_info, *new_data.data_file_info, new_dir, diff);
  const std::vector<ThingList> old_lists = list_things(old_data);
  const std::vector<ThingList> new_lists = list_things(new_data);
  for (std::size_t i = 0; i < old_lists.size(); ++i)
    compare_lists(of_common_regions(old_lists[i], *new_data.region_info),
                  of_common_regions(new_lists[i], *old_data.region_info), places, diff);
  compare_view_lists(old_data, new_data, new_dir, diff);
  std::stable_sort(
      diff.findings.begin(), diff.findings.end(),
      [](const Finding& one, const Finding& other) { return one.severity < other.severity; });
  return diff;
}
