// The check of a data set, in which one file is made up. The first byte of the input chooses
// the file, from 'a' on; the rest is its content. Without an error the program can use the
// set, and with one it cannot.
#include "data/survey-data.h"
#include "support/data-set.h"

#include <algorithm>
#include <array>
#include <map>
#include <string>

#include "cli/data-rules.h"
#include "cli/data-set-check.h"
#include "target.h"

namespace {

const std::array<const char*, 12> names{"data-file-info.txt",
                                        "data-definitions.csv",
                                        "data-parameters.csv",
                                        "region-info.csv",
                                        "PAC-family-info.csv",
                                        "PAC-species-info.csv",
                                        "PAC-geog.csv",
                                        "habitat.csv",
                                        "habitatregion.csv",
                                        "abundance-choices.csv",
                                        "species-view-definitions.csv",
                                        "species-views.csv"};

// Whether the program can use the set. The metadata first: reading them can end the process.
bool is_usable(const std::string& dir)
{
  if (data_timestamp(dir).empty())
    return false;
  RegionInfo regions(dir);
  return regions.is_valid() && DataDefs(dir).is_valid() && DataParams(dir).is_valid() &&
         HabitatInfo(dir).is_valid() && AbundanceChoices(dir).is_valid() &&
         SpeciesViewInfo(dir, &regions).is_valid() && SpeciesViews(dir).is_valid();
}

std::size_t count_lines(const std::string& path)
{
  return lines_of(read_file(path)).size();
}

void judge(const Finding& finding)
{
  const auto& rules = data_rules();
  const auto rule = std::find_if(rules.begin(), rules.end(),
                                 [&](const Rule& known) { return finding.rule == known.id; });
  require(rule != rules.end() && rule->severity == finding.severity, "the rule is in the table");
  require(!finding.consequence.empty(), "a finding has a consequence");
  if (finding.line) {
    require(*finding.line >= 1 &&
                static_cast<std::size_t>(*finding.line) <= count_lines(finding.file),
            "the file has such a line");
  }
}

// The files of a good set. They are restored one at a time.
struct GoodSet {
  GoodSet()
  {
    data.minimal();
    for (const char* const name : names)
      files[name] = read_file(data.dir + name);
  }

  DataSet data;
  std::map<std::string, std::string> files;
};

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* input, std::size_t size)
{
  static const GoodSet good;
  if (size == 0)
    return 0;
  const std::string name = names[static_cast<unsigned char>(input[0] - 'a') % names.size()];
  good.data.file(name, bytes_of(input + 1, size - 1));
  const auto findings = check_data_set(good.data.dir);
  std::for_each(findings.begin(), findings.end(), &judge);
  const bool has_error = std::any_of(findings.begin(), findings.end(), [](const Finding& finding) {
    return finding.severity == Severity::error;
  });
  require(has_error != is_usable(good.data.dir), "a set can be used if it has no error");
  good.data.file(name, good.files.at(name));
  return 0;
}
