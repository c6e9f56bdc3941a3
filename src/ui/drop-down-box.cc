#include "ui/drop-down-box.h"
