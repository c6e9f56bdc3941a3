#include "core/text.h"
