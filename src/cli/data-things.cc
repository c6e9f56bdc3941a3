#include "cli/data-things.h"

#include "data/abundance-choices.h"
#include "data/data-defs.h"
#include "data/data-params.h"
#include "data/habitat-info.h"
#include "data/reference-data.h"
#include "data/region-info.h"
#include "data/species-views.h"

namespace {

const ThingKind region_kind{
    "region", "Region", "All its locations and species are gone", {"regioncode"}};
const ThingKind place_kind{
    "place", "Location", "Saved surveys of this location no longer open", {"subregioncode"}};
const ThingKind type_kind{"type",
                          "Survey type",
                          "Saved surveys of this type open without a survey type",
                          {"surveytypeid"}};
const ThingKind zone_kind{"zone",
                          "Zone",
                          "Saved surveys of this zone show an unknown zone",
                          {"geogid"},
                          ThingKind::OF_REGION};
const ThingKind species_kind{"species",
                             "Species",
                             "Saved surveys that contain it no longer show it",
                             {"speciesid"},
                             ThingKind::OF_REGION};
const ThingKind view_kind{
    "view", "Species view", "Saved surveys that contain it open with another view", {"viewid"}};
const ThingKind habitat_kind{"habitat",
                             "Habitat",
                             "Saved surveys that contain it open without a habitat",
                             {"regioncode", "habitat"},
                             ThingKind::OF_REGION};
const ThingKind choice_kind{"choice",
                            "Choice",
                            "Saved surveys that contain it open without this choice",
                            {"group", "value"},
                            ThingKind::FIXED_NAME};
const ThingKind class_kind{"abundance",
                           "Abundance class",
                           "Saved surveys that contain it show no number",
                           {"survey_subtype_id", "abun"},
                           ThingKind::FIXED_NAME};
const ThingKind response_kind{
    "response", "Response id", "", {"responseid"}, ThingKind::FIXED_NAME | ThingKind::ONLY_MEANING};
const ThingKind limit_kind{"limit", "Limit", "It counts as 0", {"parameter"}};

const char* const region_file = "region-info.csv";
const char* const abundance_file = "abundance-choices.csv";

std::string of_region(int id, const std::string& region)
{
  return std::to_string(id) + " of region " + region;
}

ThingList list_regions(const RegionInfo& regions)
{
  ThingList list{&region_kind, {}};
  for (const auto& code : regions.region_codes) {
    Thing thing{
        "region " + code.raw(), code.raw(), region_file, code.raw(), "", "", "", "", {code.raw()}};
    for (const auto& region : regions.regions)
      if (region.regioncode == code.raw())
        thing.name = region.regionname;
    list.things.push_back(thing);
  }
  return list;
}

ThingList list_places(const RegionInfo& regions)
{
  ThingList list{&place_kind, {}};
  for (const auto& [code, name] : regions.subregion_names) {
    const std::string region = regions.subregion_regions.find(code)->second.raw();
    list.things.push_back({thing_key::place(code.raw()),
                           code.raw(),
                           region_file,
                           name.raw(),
                           "",
                           "",
                           "of region " + region,
                           "",
                           {code.raw()}});
  }
  return list;
}

ThingList list_types(const RegionInfo& regions)
{
  ThingList list{&type_kind, {}};
  for (const auto& type : regions.regions) {
    if (type.surveytypeid < 0)
      continue;
    const char* const asks = type.hasabundance ? ", asks for numbers" : ", asks for presence only";
    const std::string detail = std::string(type.visible ? "offered" : "no longer offered") +
                               (type.hasfish ? ", fish" : "") +
                               (type.hasinverts ? ", invertebrates" : "");
    list.things.push_back({thing_key::type(type.surveytypeid),
                           std::to_string(type.surveytypeid),
                           region_file,
                           type.surveytypename,
                           "",
                           type.subregioncode,
                           "of location " + type.subregioncode + asks,
                           detail,
                           {std::to_string(type.surveytypeid)}});
  }
  return list;
}

void add_zones(ThingList& list, const std::string& region, const RegionFishInfo& fish)
{
  for (const auto& [id, name] : fish.geog_names) {
    list.things.push_back({thing_key::zone(region, id),
                           of_region(id, region),
                           region + "-geog.csv",
                           name.raw(),
                           "",
                           region,
                           "",
                           "",
                           {std::to_string(id)}});
  }
}

std::string family_of(const RegionFishInfo::Species& species, const RegionFishInfo& fish)
{
  const auto family = fish.families.find(species.familyid);
  if (family == fish.families.end())
    return species.familyid;
  const auto& names = family->second;
  return (names.commonname.empty() ? names.scientificname : names.commonname).raw();
}

std::string species_detail(const RegionFishInfo::Species& species, const RegionFishInfo& fish)
{
  std::string detail = species.invertebratetype == 0 ? "fish" : "invertebrate";
  detail += ", family " + family_of(species, fish);
  detail += ", rarity " + std::to_string(species.rarefishind);
  if (!species.spanishname.empty())
    detail += ", Spanish name " + species.spanishname.raw();
  return detail;
}

void add_species(ThingList& list, const std::string& region, const RegionFishInfo& fish)
{
  for (const auto& species : fish.species) {
    if (species.speciesid < 0)
      continue;
    const bool is_named = !species.scientificname.empty();
    list.things.push_back({thing_key::species(region, species.speciesid),
                           of_region(species.speciesid, region),
                           region + "-species-info.csv",
                           (is_named ? species.scientificname : species.commonname).raw(),
                           is_named ? species.commonname.raw() : "",
                           region,
                           species.is_presence_only() ? "recorded only as present"
                                                      : "recorded as the survey type requires",
                           species_detail(species, fish),
                           {std::to_string(species.speciesid)}});
  }
}

using AddOfRegion = void (*)(ThingList&, const std::string&, const RegionFishInfo&);

ThingList list_by_region(const ThingKind& kind, const RegionInfo& regions, AddOfRegion add)
{
  ThingList list{&kind, {}};
  for (const auto& [code, fish] : regions.region_fish)
    add(list, code.raw(), fish);
  return list;
}

ThingList list_views(const RegionInfo& regions)
{
  ThingList list{&view_kind, {}};
  for (const auto& [code, subregion] : regions.subregions) {
    for (const auto& view : subregion.views) {
      list.things.push_back(
          {thing_key::view(view.viewid),
           std::to_string(view.viewid),
           "species-view-definitions.csv",
           view.viewname.raw(),
           "",
           code.raw(),
           "of location " + code.raw(),
           view.viewid == subregion.default_view ? "the default view" : "a further view",
           {std::to_string(view.viewid)}});
    }
  }
  return list;
}

ThingList list_habitats(const HabitatInfo& habitats)
{
  ThingList list{&habitat_kind, {}};
  for (const auto& [code, choices] : habitats.region_habitats) {
    const std::string region = code.raw();
    for (std::size_t i = 0; i < choices.values.size(); ++i) {
      list.things.push_back({thing_key::habitat(region, choices.values[i]),
                             of_region(choices.values[i], region),
                             "habitatregion.csv",
                             choices.labels[i].raw(),
                             "",
                             region,
                             "",
                             "",
                             {region, std::to_string(choices.values[i])}});
    }
  }
  return list;
}

ThingList list_choices(const DataDefs& defs)
{
  ThingList list{&choice_kind, {}};
  for (const auto& [name, choices] : defs.defs) {
    const std::string group = name.raw();
    for (std::size_t i = 0; i < choices.values.size(); ++i) {
      list.things.push_back({thing_key::choice(group, choices.values[i]),
                             std::to_string(choices.values[i]) + " of " + group,
                             "data-definitions.csv",
                             choices.labels[i].raw(),
                             "",
                             group,
                             "",
                             "",
                             {group, std::to_string(choices.values[i])}});
    }
  }
  return list;
}

std::string class_of_type(int abundance_class, int type)
{
  return std::to_string(abundance_class) + " of survey type " + std::to_string(type);
}

using AddChoice = void (*)(ThingList&, int type, const AbundanceChoices::Choice&);

void add_class(ThingList& list, int type, const AbundanceChoices::Choice& choice)
{
  list.things.push_back({thing_key::abundance(type, choice.abun),
                         class_of_type(choice.abun, type),
                         abundance_file,
                         choice.label.raw(),
                         "",
                         "",
                         "sent as response " + std::to_string(choice.responseid),
                         "",
                         {std::to_string(type), std::to_string(choice.abun)}});
}

void add_response(ThingList& list, int type, const AbundanceChoices::Choice& choice)
{
  const std::string id = std::to_string(choice.responseid);
  list.things.push_back({"response " + id,
                         id,
                         abundance_file,
                         "class " + class_of_type(choice.abun, type),
                         "",
                         "",
                         "",
                         "",
                         {id}});
}

ThingList list_abundances(const ThingKind& kind, const AbundanceChoices& abundances, AddChoice add)
{
  ThingList list{&kind, {}};
  for (std::size_t type = 0; type < abundances.subtypes.size(); ++type) {
    for (const auto& choice : abundances.subtypes[type].choices)
      if (choice.responseid > 0)
        add(list, static_cast<int>(type), choice);
  }
  return list;
}

ThingList list_limits(const DataParams& params)
{
  ThingList list{&limit_kind, {}};
  for (const auto& [name, value] : params.params) {
    list.things.push_back({"limit " + name.raw(),
                           name.raw(),
                           "data-parameters.csv",
                           "",
                           "",
                           "",
                           "",
                           std::to_string(value),
                           {name.raw()}});
  }
  return list;
}

} // namespace

std::vector<ThingList> list_things(const ReferenceData& data)
{
  const RegionInfo& regions = *data.region_info;
  const AbundanceChoices& abundances = *data.abundance_choices;
  return {list_regions(regions),
          list_places(regions),
          list_types(regions),
          list_by_region(zone_kind, regions, &add_zones),
          list_by_region(species_kind, regions, &add_species),
          list_views(regions),
          list_habitats(*data.habitat_info),
          list_choices(*data.data_defs),
          list_abundances(class_kind, abundances, &add_class),
          list_abundances(response_kind, abundances, &add_response),
          list_limits(*data.data_params)};
}

std::string thing_key::place(const std::string& code)
{
  return "place " + code;
}

std::string thing_key::type(int id)
{
  return "type " + std::to_string(id);
}

std::string thing_key::zone(const std::string& region, int id)
{
  return "zone " + region + ' ' + std::to_string(id);
}

std::string thing_key::species(const std::string& region, int id)
{
  return "species " + region + ' ' + std::to_string(id);
}

std::string thing_key::view(int id)
{
  return "view " + std::to_string(id);
}

std::string thing_key::habitat(const std::string& region, int code)
{
  return "habitat " + region + ' ' + std::to_string(code);
}

std::string thing_key::choice(const std::string& group, int value)
{
  return "choice " + group + ' ' + std::to_string(value);
}

std::string thing_key::abundance(int type, int abundance_class)
{
  return "abundance " + std::to_string(type) + ' ' + std::to_string(abundance_class);
}
