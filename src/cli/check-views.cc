#include <map>
#include <unordered_set>

#include "cli/alike-names.h"
#include "cli/data-checks.h"
#include "cli/table-check.h"

namespace {

// Checks the views in species-view-definitions.csv.
class ViewCheck : public TableCheck
{
public:
  explicit ViewCheck(CheckedDataSet& the_set)
      : TableCheck(the_set, "species-view-definitions.csv", expected_headings)
  {
  }

private:
  void check_row() override;
  void check_end() override;
  void check_default();

  static constexpr const char* expected_headings[] = {"viewid", "subregioncode", "viewname",
                                                      "isdefault", nullptr};
  enum Heading { VIEWID, SUBREGIONCODE, VIEWNAME, ISDEFAULT };

  std::map<std::string, long> defaults; // the line by subregion code
  AlikeNames names{"view", AlikeNames::Equal::FAULT};
};

void ViewCheck::check_row()
{
  const auto view = id(VIEWID);
  if (!view)
    return;
  const std::string id_text = std::to_string(*view);
  require_name(text(VIEWNAME), "The view", id_text);
  names.add(*this, text(VIEWNAME), text(SUBREGIONCODE));
  check_duplicate(set.views.add(*view, line()), "The view", id_text,
                  "both views show the species of both");
  set.view_subregions[*view] = text(SUBREGIONCODE);
  if (!set.may_have_subregion(text(SUBREGIONCODE)))
    fault(DataRule::SUBREGION_UNKNOWN,
          "The location " + quoted(text(SUBREGIONCODE)) + " does not exist: nobody sees this view");
  check_default();
}

void ViewCheck::check_default()
{
  if (!flag(ISDEFAULT))
    return;
  const auto [known, is_new] = defaults.try_emplace(text(SUBREGIONCODE), line());
  if (!is_new) {
    fault(DataRule::DEFAULT_VIEW_TWICE,
          "The location " + quoted(text(SUBREGIONCODE)) + " also has a default view in line " +
              std::to_string(known->second) + ": the program uses only the last one");
  }
}

void ViewCheck::check_end()
{
  set.views.is_complete = is_complete();
  check_gaps(set.views, "the view");
  if (!is_complete() || !set.survey_types.is_complete)
    return;
  for (const auto& [code, subregion] : set.subregions) {
    if (subregion.offered && defaults.count(code) == 0) {
      file_fault(DataRule::DEFAULT_VIEW_MISSING,
                 "The location " + quoted(code) +
                     " has no default view: users see no species until they choose a view");
    }
  }
}

// Checks the species of the views in species-views.csv.
class ViewSpeciesCheck : public TableCheck
{
public:
  explicit ViewSpeciesCheck(CheckedDataSet& the_set)
      : TableCheck(the_set, "species-views.csv", expected_headings)
  {
  }

private:
  struct View {
    CheckedDataSet::Region* region = nullptr; // null if it is unknown
    NumberedIds species;
    std::string family;                       // the family of the previous row
    std::unordered_set<std::string> families; // all families so far
  };

  void check_row() override;
  void check_end() override;
  View& find_view(int view);
  void check_species(View& view, int species);
  void check_family(View& view);
  void check_views();
  void check_unviewed(const std::string& code, const CheckedDataSet::Region& region);

  static constexpr const char* expected_headings[] = {"viewid", "speciesid", "familyid", nullptr};
  enum Heading { VIEWID, SPECIESID, FAMILYID };

  std::map<int, View> views;
  View* current = nullptr; // a cache: the view of the previous row, usually also of this row
  int current_id = 0;
};

void ViewSpeciesCheck::check_row()
{
  const auto id_of_view = id(VIEWID);
  const auto species = id(SPECIESID);
  if (!id_of_view || !species)
    return;
  if (!set.views.may_have(*id_of_view)) {
    fault(DataRule::VIEW_UNKNOWN,
          "The view " + std::to_string(*id_of_view) + " is not defined: nobody sees this row");
    return;
  }
  View& view = find_view(*id_of_view);
  check_species(view, *species);
  check_family(view);
}

ViewSpeciesCheck::View& ViewSpeciesCheck::find_view(int id_of_view)
{
  if (current && id_of_view == current_id)
    return *current;
  const auto [view, is_new] = views.try_emplace(id_of_view);
  current = &view->second;
  current_id = id_of_view;
  if (!is_new)
    return view->second;
  const auto code = set.view_subregions.find(id_of_view);
  if (code == set.view_subregions.end())
    return view->second;
  const auto subregion = set.subregions.find(code->second);
  if (subregion != set.subregions.end())
    view->second.region = &set.regions[subregion->second.region];
  return view->second;
}

void ViewSpeciesCheck::check_species(View& view, int species)
{
  const auto before = view.species.add(species, line());
  if (before) {
    fault(DataRule::VIEW_SPECIES_TWICE, "The view also has the species " + std::to_string(species) +
                                            " in line " + std::to_string(*before) +
                                            ": users see it twice");
  }
  if (!view.region)
    return;
  if (view.region->species.may_have(species))
    view.region->viewed_species.add(species, line());
  else
    fault(DataRule::SPECIES_UNKNOWN, "The species " + std::to_string(species) +
                                         " does not exist in the region: the view leaves it out");
}

// A view shows the name of a family at each change of the family.
void ViewSpeciesCheck::check_family(View& view)
{
  const std::string& family = text(FAMILYID);
  if (!view.families.empty() && family == view.family)
    return;
  view.family = family;
  const bool is_new = view.families.insert(family).second;
  if (!is_new) {
    fault(DataRule::VIEW_FAMILY_SPLIT, "The family " + quoted(family) +
                                           " begins a second time in the view: users see its "
                                           "name twice");
  } else if (view.region && !family.empty() && !view.region->families.may_have(family)) {
    fault(DataRule::FAMILY_UNKNOWN, "The family " + quoted(family) +
                                        " is not defined in the region: it has no name in the "
                                        "view");
  }
}

void ViewSpeciesCheck::check_end()
{
  if (!is_complete() || !set.views.is_complete || !set.survey_types.is_complete)
    return;
  check_views();
  for (const auto& [code, region] : set.regions)
    check_unviewed(code, region);
}

void ViewSpeciesCheck::check_views()
{
  for (int view = 0; view < set.views.end(); ++view) {
    if (set.views.has(view) && views.count(view) == 0) {
      set.faults.add(DataRule::VIEW_EMPTY, "species-view-definitions.csv", set.views.line_of(view),
                     "The view " + std::to_string(view) +
                         " has no species: users see an empty "
                         "list");
    }
  }
}

void ViewSpeciesCheck::check_unviewed(const std::string& code, const CheckedDataSet::Region& region)
{
  for (int species = 0; species < region.species.end(); ++species) {
    if (region.species.has(species) && !region.viewed_species.has(species)) {
      set.faults.add(DataRule::SPECIES_NOT_IN_VIEW, code + "-species-info.csv",
                     region.species.line_of(species),
                     "The species " + std::to_string(species) +
                         " is in no view: users find a fish only by the search, and cannot find an "
                         "invertebrate");
    }
  }
}

} // namespace

void check_view_definitions(CheckedDataSet& set)
{
  ViewCheck(set).run();
}

void check_view_species(CheckedDataSet& set)
{
  ViewSpeciesCheck(set).run();
}
