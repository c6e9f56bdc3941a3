#include "data/data-file-info.h"
