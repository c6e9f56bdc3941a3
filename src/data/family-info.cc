#include "data/family-info.h"
