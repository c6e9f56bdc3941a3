#include "data/species-view-info.h"

#include "core/number.h"
#include "core/text.h"
#include "data/region-info.h"

namespace {

const char* const expected_headings[] = {"viewid", "subregioncode", "viewname", "isdefault",
                                         nullptr};
enum Heading { VIEWID, SUBREGIONCODE, VIEWNAME, ISDEFAULT };

} // namespace

SpeciesViewInfo::SpeciesViewInfo(const std::string& dir, RegionInfo* regions) : region_info(regions)
{
  valid = SpeciesViewInfo::read_file(dir + "species-view-definitions.csv") == RET_SUCCESS;
}

SpeciesViewInfo::~SpeciesViewInfo() = default;

RetCode SpeciesViewInfo::process_headings(const std::vector<Glib::ustring>& the_headings)
{
  return verify_headings(the_headings, expected_headings);
}

RetCode SpeciesViewInfo::process_line(const std::vector<Glib::ustring>& fields)
{
  if (fields.empty()) {
    derive_view_choices();
    return RET_SUCCESS;
  }
  const int id = to_int(field(fields, VIEWID));
  if (!usable_id(id, "viewid"))
    return RET_SUCCESS;
  const Glib::ustring& subregion_code = field(fields, SUBREGIONCODE);
  SubregionInfo& subregion = region_info->subregions[subregion_code];
  subregion.views.push_back({id, field(fields, VIEWNAME)});
  const auto index = static_cast<std::size_t>(id);
  if (index >= view_subregions.size())
    view_subregions.resize(index + 1);
  view_subregions[index] = subregion_code;
  if (same_bytes(field(fields, ISDEFAULT), "1"))
    subregion.default_view = id;
  return RET_SUCCESS;
}

void SpeciesViewInfo::derive_view_choices()
{
  for (auto& [code, subregion] : region_info->subregions) {
    FromCSV::Def choices;
    for (const auto& view : subregion.views) {
      choices.labels.push_back(view.viewname);
      choices.values.push_back(view.viewid);
    }
    subregion.view_choices = choices;
  }
}
