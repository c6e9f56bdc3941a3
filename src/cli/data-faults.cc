#include "cli/data-faults.h"

#include <algorithm>
#include <filesystem>
#include <tuple>
#include <utility>

DataFaults::DataFaults(std::string the_dir) : dir(std::move(the_dir)) {}

void DataFaults::add(DataRule rule, const std::string& file, std::optional<long> line,
                     std::string consequence)
{
  const Rule& broken = rule_of(rule);
  findings.push_back({(std::filesystem::path(dir) / file).string(), line, broken.id,
                      broken.severity, std::move(consequence)});
}

std::vector<Finding> DataFaults::take_sorted()
{
  std::stable_sort(findings.begin(), findings.end(), [](const Finding& one, const Finding& other) {
    return std::tie(one.file, one.line) < std::tie(other.file, other.line);
  });
  return std::move(findings);
}
