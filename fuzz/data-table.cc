// Target: the readers of the eleven kinds of data file. The first byte of the input selects the
// kind, from 'a' on. The rest replaces that file in a valid data set.
#include "data/survey-data.h"
#include "support/data-set.h"

#include <string>

#include "target.h"

namespace {

const char* const kinds[] = {"data-definitions.csv",  "data-parameters.csv",
                             "region-info.csv",       "PAC-family-info.csv",
                             "PAC-species-info.csv",  "PAC-geog.csv",
                             "habitat.csv",           "habitatregion.csv",
                             "abundance-choices.csv", "species-view-definitions.csv",
                             "species-views.csv"};
enum Kind {
  DEFINITIONS,
  PARAMETERS,
  REGIONS,
  FAMILIES,
  SPECIES,
  ZONES,
  HABITATS,
  REGION_HABITATS,
  ABUNDANCES,
  VIEW_DEFINITIONS,
  VIEWS,
  NUMBER_OF_KINDS
};

bool are_in_step(const FromCSV::Def& choices)
{
  return choices.labels.size() == choices.values.size();
}

void read_definitions(const std::string& dir)
{
  const DataDefs defs(dir);
  for (const auto& [group, choices] : defs.defs)
    require(!group.empty() && are_in_step(choices), "a group has a name, and a label for each id");
}

void use_region(RegionInfo& regions, const RegionFishInfo& fish)
{
  require(!regions.is_valid() || fish.initialised,
          "each region is complete if the table of regions is valid");
  for (std::size_t id = 0; id < fish.species.size(); ++id) {
    const auto* const species = fish.find_species(static_cast<int>(id));
    require(!species || fish.families.count(species->familyid) == 1, "a species has a family");
  }
  for (const auto& id : fish.family_ids)
    require(fish.families.count(id) == 1, "a listed family is known");
  for (const int id : fish.geog_ids)
    require(fish.geog_names.count(id) == 1, "a listed zone has a name");
}

void read_regions(const std::string& dir)
{
  RegionInfo regions(dir);
  for (const auto& [region, fish] : regions.region_fish)
    use_region(regions, fish);
  for (const auto& [code, choices] : regions.survey_types) {
    require(are_in_step(choices), "a survey type has a name");
    for (const int id : choices.values)
      require(regions.regions.at(static_cast<std::size_t>(id)).visible,
              "no hidden type is offered");
  }
}

void read_habitats(const std::string& dir)
{
  const HabitatInfo habitats(dir);
  if (!habitats.is_valid())
    return;
  for (const auto& [region, ids] : habitats.region_habitat_ids) {
    for (const int id : ids)
      require(id == -1 || (id >= 0 && static_cast<std::size_t>(id) < habitats.names.size()),
              "each habitat of a region is known");
  }
  for (const auto& [region, choices] : habitats.region_habitats)
    require(are_in_step(choices), "a habitat has a name");
}

void read_abundances(const std::string& dir)
{
  const AbundanceChoices abundances(dir);
  for (const auto& type : abundances.subtypes)
    require(type.choices.empty() || type.choices.front().label.raw() == "None",
            "the first choice is None");
}

void read_views(const std::string& dir)
{
  RegionInfo regions(dir);
  const SpeciesViewInfo view_info(dir, &regions);
  const SpeciesViews views(dir);
  for (const auto& [code, subregion] : regions.subregions) {
    require(!view_info.is_valid() || subregion.views.size() == subregion.view_choices.values.size(),
            "each view can be chosen");
    for (const auto& view : subregion.views) {
      for (const auto& species : views.species_of(view.viewid))
        require(views.species_set(view.viewid).count(species.speciesid) == 1,
                "the set of a view contains the species of its list");
    }
  }
}

void read(Kind kind, const std::string& dir)
{
  switch (kind) {
  case DEFINITIONS:
    return read_definitions(dir);
  case PARAMETERS:
    DataParams{dir};
    return;
  case REGIONS:
  case FAMILIES:
  case SPECIES:
  case ZONES:
    return read_regions(dir);
  case HABITATS:
  case REGION_HABITATS:
    return read_habitats(dir);
  case ABUNDANCES:
    return read_abundances(dir);
  case VIEW_DEFINITIONS:
  case VIEWS:
    return read_views(dir);
  case NUMBER_OF_KINDS:
    return;
  }
}

// The files of a valid data set, which are restored after each input.
class ValidSet
{
public:
  ValidSet()
  {
    data.minimal();
    for (const char* name : kinds)
      files.push_back({name, read_file(data.dir + name)});
  }

  struct File {
    std::string name;
    std::string text;
  };

  DataSet data;
  std::vector<File> files; // by kind
};

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* input, std::size_t size)
{
  static const ValidSet valid;
  if (size == 0)
    return 0;
  const int kind = static_cast<unsigned char>(input[0] - 'a') % NUMBER_OF_KINDS;
  const ValidSet::File& file = valid.files[static_cast<std::size_t>(kind)];
  valid.data.file(file.name, bytes_of(input + 1, size - 1));
  read(static_cast<Kind>(kind), valid.data.dir);
  valid.data.file(file.name, file.text);
  return 0;
}
