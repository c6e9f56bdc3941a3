// Target: the check of a data set. The first byte of the input selects a file, from 'a' on. The
// rest replaces that file in a valid data set. The check must find an error if, and only if, the
// program cannot use the set.
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

// Returns whether the program can use the set. Checks the metadata first, because reading invalid
// metadata can end the process.
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

void check_finding(const Finding& finding)
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

// The files of a valid data set, which are restored after each input.
struct ValidSet {
  ValidSet()
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
  static const ValidSet valid;
  if (size == 0)
    return 0;
  const std::string name = names[static_cast<unsigned char>(input[0] - 'a') % names.size()];
  valid.data.file(name, bytes_of(input + 1, size - 1));
  const auto findings = check_data_set(valid.data.dir);
  std::for_each(findings.begin(), findings.end(), &check_finding);
  const bool has_error = std::any_of(findings.begin(), findings.end(), [](const Finding& finding) {
    return finding.severity == Severity::error;
  });
  require(has_error != is_usable(valid.data.dir),
          "a set can be used if, and only if, it has no error");
  valid.data.file(name, valid.files.at(name));
  return 0;
}
