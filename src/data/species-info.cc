#include "data/species-info.h"
