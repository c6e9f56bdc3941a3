#include "data/from-csv.h"
