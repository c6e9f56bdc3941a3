// Tests whether docs/data-files.md lists the rules of mavo-data check correctly.

#include "support/data-set.h"

#include <gtest/gtest.h>

#include <regex>
#include <set>
#include <sstream>
#include <string>

#include "cli/data-rules.h"

namespace {

// Returns "id severity" for each rule, in the order of the table.
std::string listed_rules()
{
  std::string list;
  for (const Rule& rule : data_rules()) {
    const char* const severity = rule.severity == Severity::error     ? "error"
                                 : rule.severity == Severity::warning ? "warning"
                                                                      : "hint";
    list += rule.id + std::string(" ") + severity + "\n";
  }
  return list;
}

// Returns the same from the rows of the document that have an example and a consequence.
std::string documented_rules()
{
  static const std::regex row("\\| `([a-z-]+)` \\| (error|warning|hint) \\| [^|]+ \\| [^|]+ \\|");
  std::string list;
  std::istringstream lines(read_file(MAVO_DOCS "/data-files.md"));
  std::smatch found;
  for (std::string line; std::getline(lines, line);)
    if (std::regex_match(line, found, row))
      list += found[1].str() + " " + found[2].str() + "\n";
  return list;
}

} // namespace

TEST(DataRules, AreAllInTheDocumentWithAnExample)
{
  EXPECT_EQ(listed_rules(), documented_rules());
}

TEST(DataRules, HaveUniqueIdsAndTheOrderOfTheirEnumeration)
{
  std::set<std::string> ids;
  for (const Rule& rule : data_rules()) {
    EXPECT_TRUE(ids.insert(rule.id).second) << rule.id;
    EXPECT_EQ(&rule, &rule_of(rule.rule));
  }
}
