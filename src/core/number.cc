#include "core/number.h"
