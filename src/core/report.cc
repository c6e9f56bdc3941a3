#include "core/report.h"
