#include "data/species-info.h"

#include "core/number.h"
#include "core/report.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <system_error>

namespace {

const char* const expected_headings[] = {"speciesid", "scientificname",   "commonname",
                                         "familyid",  "invertebratetype", "rarefishind",
                                         nullptr};
enum Heading { SPECIESID, SCIENTIFICNAME, COMMONNAME, FAMILYID, INVERTEBRATETYPE, RAREFISHIND };

// Estimates the number of species from the file's size, so that the table need not grow row
// by row.
std::size_t species_expected(const std::string& path)
{
  constexpr std::uintmax_t short_row = 50;
  constexpr std::uintmax_t most = FromCSV::max_id + 1;
  std::error_code no_such_file;
  const auto size = std::filesystem::file_size(path, no_such_file);
  return no_such_file ? 0 : static_cast<std::size_t>(std::min(size / short_row, most));
}

} // namespace

RegionFishInfo::SpeciesInfo::SpeciesInfo(const std::string& dir, RegionFishInfo& info,
                                         const std::string& region_code)
    : fish(&info)
{
  for (auto& [id, family] : fish->families)
    families_by_id.emplace(id, &family);
  const std::string path = dir + region_code + "-species-info.csv";
  fish->species.reserve(species_expected(path));
  valid = SpeciesInfo::read_file(path) == RET_SUCCESS;
}

RegionFishInfo::SpeciesInfo::~SpeciesInfo() = default;

RetCode
RegionFishInfo::SpeciesInfo::process_headings(const std::vector<Glib::ustring>& the_headings)
{
  const RetCode result = verify_headings(the_headings, expected_headings);
  const auto spanish = column_index.find("spanishname");
  if (spanish != column_index.end())
    spanish_column = spanish->second;
  return result;
}

RetCode RegionFishInfo::SpeciesInfo::process_line(const std::vector<Glib::ustring>& fields)
{
  if (fields.empty())
    return RET_SUCCESS;
  const int id = to_int(field(fields, SPECIESID));
  if (!usable_id(id, "speciesid"))
    return RET_SUCCESS;
  const auto index = static_cast<std::size_t>(id);
  if (index >= fish->species.size())
    fish->species.resize(index + 1);

  Species& row = fish->species[index];
  row.speciesid = id;
  row.invertebratetype = number<std::uint8_t>(fields, INVERTEBRATETYPE);
  row.rarefishind = number<std::int8_t>(fields, RAREFISHIND);
  fish->max_rarefishind = std::max(fish->max_rarefishind, row.rarefishind);
  row.familyid = field(fields, FAMILYID);
  settle_family(row);
  // Moves copies into the row, because an assignment could allocate spare capacity.
  row.scientificname = Glib::ustring(field(fields, SCIENTIFICNAME));
  row.commonname = Glib::ustring(field(fields, COMMONNAME));
  if (spanish_column) {
    fish->has_spanish = true;
    if (*spanish_column < fields.size())
      row.spanishname = Glib::ustring(fields[*spanish_column]);
  }
  return RET_SUCCESS;
}

// Gives the species a family with a name. Creates the family or its name if it is missing.
void RegionFishInfo::SpeciesInfo::settle_family(Species& row)
{
  const bool complain = row.invertebratetype == 0 && debug_level >= -1;
  const char* const code = fish->region.c_str();
  if (row.familyid.empty()) {
    row.familyid = "(empty)";
    if (complain)
      printf("Region %s species id %d has no family!\n", code, row.speciesid);
  }
  Family& family = find_family(row.familyid);
  if (family.id.empty()) {
    family.id = "Undefined family " + row.familyid;
    if (complain)
      printf("Region %s family id %s is not defined!\n", code, row.familyid.c_str());
  }
  if (family.commonname.empty()) {
    family.commonname = "Unnamed family (" + family.id + ")";
    if (complain)
      printf("Region %s family id %s has no name!\n", code, row.familyid.c_str());
  }
}

RegionFishInfo::Family& RegionFishInfo::SpeciesInfo::find_family(const std::string& id)
{
  Family*& family = families_by_id[id];
  if (!family)
    family = &fish->families[id];
  return *family;
}
