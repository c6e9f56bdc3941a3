#include "data/region-info.h"
