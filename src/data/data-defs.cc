#include "data/data-defs.h"

namespace {

const char* const expected_headings[] = {"group", "value", "label", nullptr};
enum Heading { GROUP, VALUE, LABEL };

} // namespace

DataDefs::DataDefs(const std::string& dir)
{
  valid = DataDefs::read_file(dir + "data-definitions.csv") == RET_SUCCESS;
}

DataDefs::~DataDefs() = default;

RetCode DataDefs::process_headings(const std::vector<Glib::ustring>& the_headings)
{
  return verify_headings(the_headings, expected_headings);
}

// A group is stored when the next one begins. So the rows of a group must be consecutive: a
// later run of rows replaces an earlier one of the same group. Rows of the group with the
// empty name are dropped.
RetCode DataDefs::process_line(const std::vector<Glib::ustring>& fields)
{
  if (fields.empty() || field(fields, GROUP) != current_group) {
    finish_group();
    if (fields.empty())
      return RET_SUCCESS;
    current_group = field(fields, GROUP);
  }

  const int value = number(fields, VALUE);
  const Glib::ustring& label = field(fields, LABEL);
  const bool only_declares_the_group = value == 0 && label.empty();
  if (!only_declares_the_group) {
    values.push_back(value);
    labels.push_back(label);
  }
  return RET_SUCCESS;
}

void DataDefs::finish_group()
{
  if (!current_group.empty())
    defs[current_group] = Def(labels, values);
  current_group.clear();
  labels.clear();
  values.clear();
  labels.reserve(50);
  values.reserve(50);
}
