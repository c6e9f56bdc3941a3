#include "data/region-fish-info.h"
