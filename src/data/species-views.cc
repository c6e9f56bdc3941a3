#include "data/species-views.h"
