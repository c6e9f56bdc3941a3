#include "data/data-params.h"
