#include "ui/listed-panel.h"
