#include "core/ret-code.h"
