// Target: the description of a saved survey, from its file to its line in the list.
#include "core/thrown-text.h"
#include "data/data-defs.h"
#include "data/region-info.h"
#include "store/survey-description.h"
#include "support/data-set.h"

#include <memory>

#include "target.h"

namespace {

struct Tables {
  Tables()
  {
    data.minimal();
    regions = std::make_unique<RegionInfo>(data.dir);
    defs = std::make_unique<DataDefs>(data.dir);
    require(regions->is_valid() && defs->is_valid(), "the valid data set can be read");
  }

  DataSet data;
  std::unique_ptr<RegionInfo> regions;
  std::unique_ptr<DataDefs> defs;
};

void describe(const std::string& path, const Tables& tables, int* member_id)
{
  try {
    const SurveySummary summary = read_survey_summary(path, member_id);
    const Glib::ustring line = describe_survey(summary, *tables.regions, *tables.defs, !member_id);
    require(line.validate() && !line.empty(), "a description is valid UTF-8 and not empty");
  } catch (...) {
    require(!thrown_text("", "").empty(), "a refusal has a reason");
  }
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
  static const Tables tables;
  static const Scratch scratch;
  scratch.write("survey", bytes_of(data, size));
  int member_id = -1;
  describe(scratch.dir + "survey", tables, &member_id);
  describe(scratch.dir + "survey", tables, nullptr);
  return 0;
}
