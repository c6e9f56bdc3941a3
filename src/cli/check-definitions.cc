#include <limits>
#include <map>
#include <set>

#include "cli/alike-names.h"
#include "cli/data-checks.h"
#include "cli/table-check.h"

namespace {

const char* const expected_headings[] = {"group", "value", "label", nullptr};
enum Heading { GROUP, VALUE, LABEL };

// Checks the groups of choices in data-definitions.csv.
class DefinitionCheck : public TableCheck
{
public:
  explicit DefinitionCheck(CheckedDataSet& the_set)
      : TableCheck(the_set, "data-definitions.csv", expected_headings)
  {
  }

private:
  void check_row() override;
  void check_end() override;
  void begin_group();
  void check_choice();
  void check_value(int value);

  struct Group {
    KnownIds<long> values; // only values that users can choose
    int last_value = std::numeric_limits<int>::min();
    bool has_snorkel = false;
  };

  std::map<std::string, Group> groups;
  std::string current;
  bool has_begun = false;
  AlikeNames labels{"label", AlikeNames::Equal::FAULT};
};

void DefinitionCheck::check_row()
{
  if (!has_begun || text(GROUP) != current)
    begin_group();
  if (!current.empty())
    check_choice();
}

void DefinitionCheck::begin_group()
{
  has_begun = true;
  current = text(GROUP);
  if (current.empty()) {
    fault(DataRule::GROUP_UNNAMED, "The row has no group: the program skips it and the rows "
                                   "without a group directly after it");
  } else if (groups.count(current) > 0) {
    fault(DataRule::GROUP_SPLIT, "The group " + quoted(current) +
                                     " begins a second time: users do not see its rows above");
  }
}

void DefinitionCheck::check_choice()
{
  Group& group = groups[current];
  const auto value =
      number(VALUE, std::numeric_limits<int>::min(), std::numeric_limits<int>::max());
  if (!value || (*value == 0 && text(LABEL).empty()))
    return; // the row only declares its group
  const std::string choice = std::to_string(*value) + " of " + quoted(current);
  require_name(text(LABEL), "The choice", choice);
  labels.add(*this, text(LABEL), current);
  group.has_snorkel = group.has_snorkel || text(LABEL) == "Snorkel";
  check_duplicate(group.values.add(*value, line()), "The value", choice,
                  "saved surveys show a choice that the user did not make");
  check_value(*value);
  group.last_value = *value;
}

void DefinitionCheck::check_value(int value)
{
  if (current == "divestart" && (value < 1 || value > 24)) {
    fault(DataRule::DIVE_START_HOUR, "The value " + std::to_string(value) +
                                         " is not an hour from 1 to 24: file names and the list "
                                         "of surveys show a wrong time or none");
  }
  if (current == "depth" && value < groups[current].last_value) {
    fault(DataRule::DEPTH_ORDER, "The value " + std::to_string(value) +
                                     " is below the value of the previous row: the program "
                                     "refuses a correct maximum depth");
  }
}

void DefinitionCheck::check_end()
{
  if (!is_complete())
    return;
  for (const char* const name : {"divestart", "visibility", "depth", "current"}) {
    if (groups[name].values.lines.empty())
      file_fault(DataRule::GROUP_MISSING,
                 "The group " + quoted(name) + " has no choices: its box stays empty");
  }
  const std::size_t starts = groups["divestart"].values.lines.size();
  if (starts > 0 && starts < 7)
    file_fault(DataRule::DIVE_START_SHORT, "The list of start times begins at the seventh row, "
                                           "but \"divestart\" has fewer rows: the box stays empty");
  if (!groups["depth"].values.lines.empty() && !groups["depth"].has_snorkel)
    file_fault(DataRule::SNORKEL_MISSING, "No label of \"depth\" is \"Snorkel\": choosing one "
                                          "depth of a snorkel survey does not set the other");
}

} // namespace

void check_definitions(CheckedDataSet& set)
{
  DefinitionCheck(set).run();
}
