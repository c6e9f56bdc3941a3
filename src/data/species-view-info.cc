#include "data/species-view-info.h"
