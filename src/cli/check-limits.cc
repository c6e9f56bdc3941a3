#include <limits>
#include <map>

#include "cli/data-checks.h"
#include "cli/table-check.h"

namespace {

const char* const expected_headings[] = {"parameter", "value", nullptr};
enum Heading { PARAMETER, VALUE };

// A lower limit and its upper limit.
struct Range {
  const char* low;
  const char* high;
};
constexpr Range ranges[] = {{"temp_min_f", "temp_max_f"},
                            {"temp_min_c", "temp_max_c"},
                            {"bottom_time_confirm_under", "bottom_time_confirm_over"}};

// Checks the limits in data-parameters.csv.
class LimitCheck : public TableCheck
{
public:
  explicit LimitCheck(CheckedDataSet& the_set)
      : TableCheck(the_set, "data-parameters.csv", expected_headings)
  {
  }

private:
  void check_row() override;
  void check_end() override;

  KnownIds<std::string> known;
  std::map<std::string, int> limits;
};

void LimitCheck::check_row()
{
  check_duplicate(known.add(text(PARAMETER), line()), "The limit", quoted(text(PARAMETER)),
                  "only this row counts");
  const auto value =
      number(VALUE, std::numeric_limits<int>::min(), std::numeric_limits<int>::max());
  if (value)
    limits[text(PARAMETER)] = *value;
}

void LimitCheck::check_end()
{
  if (!is_complete())
    return;
  for (const auto& [low, high] : ranges) {
    for (const char* const name : {low, high}) {
      if (known.lines.count(name) == 0) {
        file_fault(DataRule::LIMIT_MISSING, "The limit " + quoted(name) +
                                                " is missing and counts as 0: the program "
                                                "refuses or questions correct values");
      }
    }
    if (limits.count(low) > 0 && limits.count(high) > 0 && limits[low] > limits[high])
      set.faults.add(DataRule::LIMIT_ORDER, "data-parameters.csv", known.lines[high],
                     quoted(high) + " is below " + quoted(low) + ": the program accepts no value");
  }
}

} // namespace

void check_limits(CheckedDataSet& set)
{
  LimitCheck(set).run();
}
