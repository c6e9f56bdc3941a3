#include "core/number.h"
#include "data/abundance-choices.h"

#include <cstdint>
#include <limits>
#include <map>

#include "cli/alike-names.h"
#include "cli/data-checks.h"
#include "cli/numbering-gaps.h"
#include "cli/table-check.h"

namespace {

const char* const expected_headings[] = {"responseid", "survey_subtype_id", "label", "abun",
                                         nullptr};
enum Heading { RESPONSEID, SURVEY_SUBTYPE_ID, LABEL, ABUN };

constexpr int presence_list = AbundanceChoices::presence_subtype;
constexpr int present = 1;        // the class of list 99 that always has the label "Present"
constexpr int not_looked_for = 9; // the class of list 99 that the program leaves out

// Checks the abundance classes in abundance-choices.csv.
class AbundanceCheck : public TableCheck
{
public:
  explicit AbundanceCheck(CheckedDataSet& the_set)
      : TableCheck(the_set, "abundance-choices.csv", expected_headings)
  {
  }

private:
  void check_row() override;
  void check_end() override;
  bool is_usable(Heading heading, DataRule rule, const char* consequence);
  void check_response();
  void check_place(int type, int abundance);

  std::map<int, int> last_classes; // by survey type
  NumberedIds responses;
  bool has_present = false;
  AlikeNames labels{"label", AlikeNames::Equal::FAULT};
  NumberingGaps gaps;
};

void AbundanceCheck::check_row()
{
  const auto type = id(SURVEY_SUBTYPE_ID);
  if (!type)
    return;
  check_response();
  if (!is_usable(ABUN, DataRule::ABUNDANCE_CLASS,
                 "users see this class in the wrong place, or not at all"))
    return;
  const int abundance = to_int(text(ABUN));
  if (*type == presence_list && abundance == not_looked_for)
    return;
  has_present = has_present || (*type == presence_list && abundance == present);
  if (*type != presence_list && !set.survey_types.may_have(*type))
    fault(DataRule::SURVEY_TYPE_UNKNOWN,
          "The survey type " + std::to_string(*type) + " does not exist: nobody sees this choice");
  require_name(text(LABEL), "The abundance class", std::to_string(abundance));
  labels.add(*this, text(LABEL), std::to_string(*type));
  check_place(*type, abundance);
}

// Returns whether a number is above 0 and fits in 16 bits. Reports a fault if it is not.
bool AbundanceCheck::is_usable(Heading heading, DataRule rule, const char* consequence)
{
  const std::int64_t value = to_int64(text(heading).c_str());
  if (value < 1 || value > std::numeric_limits<std::int16_t>::max()) {
    fault(rule, std::string(expected_headings[heading]) + " " + quoted(text(heading)) +
                    " is not between 1 and 32767: " + consequence);
    return false;
  }
  return number(heading, 1, std::numeric_limits<std::int16_t>::max()).has_value();
}

void AbundanceCheck::check_response()
{
  if (!is_usable(RESPONSEID, DataRule::RESPONSE_ID,
                 "surveys contain a number that the server does not know"))
    return;
  const auto before = responses.add(to_int(text(RESPONSEID)), line());
  if (before) {
    fault(DataRule::RESPONSE_TWICE, "responseid " + text(RESPONSEID) + " is also in line " +
                                        std::to_string(*before) +
                                        ": the server cannot distinguish the two choices");
  }
}

// The program stores a row at the index of its class, unless an earlier row has that class.
void AbundanceCheck::check_place(int type, int abundance)
{
  int& last = last_classes[type];
  if (abundance <= last) {
    fault(DataRule::ABUNDANCE_ORDER,
          "The class " + std::to_string(abundance) + " is not above the previous class " +
              std::to_string(last) + ": users see the wrong label for it");
    return;
  }
  if (!gaps.allow(*this, std::to_string(type), abundance))
    return;
  if (abundance > last + 1) {
    fault(DataRule::ABUNDANCE_GAP, "The classes between " + std::to_string(last) + " and " +
                                       std::to_string(abundance) +
                                       " are missing: users see \"Oops\" in their place");
  }
  last = abundance;
}

void AbundanceCheck::check_end()
{
  if (!is_complete())
    return;
  if (!has_present)
    file_fault(DataRule::PRESENCE_MISSING,
               "The list 99 has no class 1: users cannot mark invertebrates of type 2");
  for (const auto& [type, row] : set.survey_type_rows) {
    if (row.visible && last_classes.count(type) == 0) {
      set.faults.add(DataRule::ABUNDANCE_MISSING, "region-info.csv", row.line,
                     "The survey type " + std::to_string(type) +
                         " has no abundance classes: users cannot mark a species");
    }
  }
}

} // namespace

void check_abundances(CheckedDataSet& set)
{
  AbundanceCheck(set).run();
}
