#include "core/exception-report.h"
