#include "data/habitat-region-info.h"
