#include "core/launch.h"
