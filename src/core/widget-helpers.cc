#include "core/widget-helpers.h"
