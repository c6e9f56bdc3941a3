#include "data/abundance-choices.h"

#include "core/number.h"
#include "core/report.h"

#include <cstdio>

namespace {

const char* const expected_headings[] = {"responseid", "survey_subtype_id", "label", "abun",
                                         nullptr};
enum Heading { RESPONSEID, SURVEY_SUBTYPE_ID, LABEL, ABUN };

// Returns a pointer to the element, const if the list is, or null if the index is out of range.
template<class List>
auto element_at(List& list, int index) -> decltype(list.data())
{
  if (index < 0 || static_cast<std::size_t>(index) >= list.size())
    return nullptr;
  return &list[static_cast<std::size_t>(index)];
}

} // namespace

AbundanceChoices::AbundanceChoices(const std::string& dir)
{
  valid = AbundanceChoices::read_file(dir + "abundance-choices.csv") == RET_SUCCESS;
}

AbundanceChoices::~AbundanceChoices() = default;

RetCode AbundanceChoices::process_headings(const std::vector<Glib::ustring>& the_headings)
{
  return verify_headings(the_headings, expected_headings);
}

RetCode AbundanceChoices::process_line(const std::vector<Glib::ustring>& fields)
{
  if (fields.empty()) {
    trace_choices();
    return RET_SUCCESS;
  }
  Choice choice;
  choice.responseid = number<std::int16_t>(fields, RESPONSEID);
  choice.abun = number<std::int16_t>(fields, ABUN);
  choice.label = field(fields, LABEL);
  const int id = to_int(field(fields, SURVEY_SUBTYPE_ID));
  if (id == presence_subtype && choice.abun == 9)
    return RET_SUCCESS;
  if (id == presence_subtype && choice.abun == 1)
    choice.label = "Present";
  if (usable_id(id, "survey_subtype_id"))
    add_choice(static_cast<std::size_t>(id), choice);
  return RET_SUCCESS;
}

// Adds fillers where the file skips a class, so that the index is the abundance class. If
// the class already has a row, appends the new row nevertheless. So the rows of a survey type
// must be in ascending order.
void AbundanceChoices::add_choice(std::size_t subtype, const Choice& choice)
{
  if (subtype >= subtypes.size())
    subtypes.resize(subtype + 1);
  auto& choices = subtypes[subtype].choices;
  if (choices.empty())
    choices.push_back({-1, 0, "None"});
  if (choice.abun > 0 && static_cast<std::size_t>(choice.abun) > choices.size()) {
    const auto position = static_cast<std::size_t>(choice.abun);
    if (!allow_gap(position - choices.size()))
      return;
    choices.resize(position, {-1, 0, "Oops"});
  }
  choices.push_back(choice);
}

void AbundanceChoices::trace_choices() const
{
  if (debug_level < 30)
    return;
  puts("AbundanceChoices:");
  for (std::size_t subtype = 0; subtype < subtypes.size(); ++subtype) {
    printf("    %d:\n", static_cast<int>(subtype));
    for (const auto& choice : subtypes[subtype].choices)
      printf("        %d: %s = %d\n", choice.abun, choice.label.c_str(), choice.responseid);
  }
  puts("end of AbundanceChoices");
}

const AbundanceChoices::SurveySubtypeChoiceInfo*
AbundanceChoices::find_subtype(int survey_type_id) const
{
  return element_at(subtypes, survey_type_id);
}

AbundanceChoices::SurveySubtypeChoiceInfo* AbundanceChoices::find_subtype(int survey_type_id)
{
  return element_at(subtypes, survey_type_id);
}
