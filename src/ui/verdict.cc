#include "ui/verdict.h"

#include <string>

Glib::ustring verdict_on(std::size_t marked)
{
  if (marked == 0)
    return "Complete";
  if (marked == 1)
    return "1 entry is missing or needs a look";
  return std::to_string(marked) + " entries are missing or need a look";
}
