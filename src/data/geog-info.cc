#include "data/geog-info.h"
