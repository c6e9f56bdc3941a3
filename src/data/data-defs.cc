#include "data/data-defs.h"
