#include "ui/start-panel.h"
