#include "cli/utf8-names.h"

Utf8Names::Utf8Names() : utf8(newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr))
{
  previous = utf8 ? uselocale(utf8) : nullptr;
}

Utf8Names::~Utf8Names()
{
  if (!utf8)
    return;
  uselocale(previous);
  freelocale(utf8);
}
