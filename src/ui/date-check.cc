#include "ui/date-check.h"
