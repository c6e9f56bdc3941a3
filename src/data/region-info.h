#pragma once

#include "data/from-csv.h"
#include "data/region-fish-info.h"
#include "data/region.h"
#include "data/subregion-info.h"

// The regions, subregions and survey types. Its constructor also reads the fish tables of
// every region, so that nothing is read later.
class RegionInfo : public FromCSV
{
public:
  // Reads region-info.csv in `dir`, which ends in a slash.
  explicit RegionInfo(const std::string& dir);
  ~RegionInfo() override;
  RetCode process_line(const std::vector<Glib::ustring>& fields) override;
  RetCode process_headings(const std::vector<Glib::ustring>& the_headings) override;

  std::vector<Region> regions;                            // by survey type id, with gaps
  std::map<Glib::ustring, Glib::ustring> subregion_codes; // by subregion name
  // The keys of the following five tables are subregion codes.
  std::map<Glib::ustring, Glib::ustring> subregion_names;
  std::map<Glib::ustring, Glib::ustring> subregion_regions; // region codes
  std::map<Glib::ustring, std::vector<int>> subregion_ids;  // survey types, in file order
  std::map<Glib::ustring, Def> survey_types;                // the visible survey types
  std::map<Glib::ustring, std::map<int, Glib::ustring>> hidden_survey_types; // names by id
  std::map<Glib::ustring, RegionFishInfo> region_fish;                       // by region code
  // By subregion code. SpeciesViewInfo fills this table.
  std::map<Glib::ustring, SubregionInfo> subregions;
  std::vector<Glib::ustring> region_codes; // without duplicates, in order of `subregion_ids`
  Def subregion_list; // names of the subregions that offer new surveys, in order of their codes
  std::string data_dir;

private:
  void trace_row(const Region& region, const std::vector<Glib::ustring>& fields);
  RetCode derive_tables();
  void derive_survey_types(const Glib::ustring& code, const std::vector<int>& ids);
  RetCode read_region(const std::string& region_code);
};
