#include "data/data-params.h"

namespace {

const char* const expected_headings[] = {"parameter", "value", nullptr};
enum Heading { PARAMETER, VALUE };

} // namespace

DataParams::DataParams(const std::string& dir)
{
  valid = DataParams::read_file(dir + "data-parameters.csv") == RET_SUCCESS;
}

DataParams::~DataParams() = default;

RetCode DataParams::process_headings(const std::vector<Glib::ustring>& the_headings)
{
  return verify_headings(the_headings, expected_headings);
}

RetCode DataParams::process_line(const std::vector<Glib::ustring>& fields)
{
  if (!fields.empty())
    params[field(fields, PARAMETER)] = number(fields, VALUE);
  return RET_SUCCESS;
}
