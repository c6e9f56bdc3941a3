#include "cli/numbering-gaps.h"

#include "cli/table-check.h"

bool NumberingGaps::allow(TableCheck& table, const std::string& list, int number)
{
  std::size_t& length = lengths[list];
  const auto position = static_cast<std::size_t>(number);
  if (position < length)
    return true;
  if (position - length > gaps_left) {
    table.fault(DataRule::NUMBERING_GAP, "The number " + std::to_string(number) +
                                             " leaves too many smaller numbers unused: the program "
                                             "skips the row");
    return false;
  }
  gaps_left -= position - length;
  length = position + 1;
  return true;
}
