#include "core/markup.h"
