#include "ui/window-title.h"
