#include "data/habitat-info.h"
