#include "data/csv-line.h"
