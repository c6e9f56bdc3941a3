#include "core/ret-code.h"

int translate_code(RetCode code)
{
  // The first element is for RET_SUCCESS. Scripts may depend on the unusual values.
  static const int statuses[] = {0, 1, 1, 1, 1, 1, 2, 1, 1, 45, 47};
  if (code < RET_SUCCESS || code > RET_ASSERTION)
    return 1;
  return statuses[code - RET_SUCCESS];
}
