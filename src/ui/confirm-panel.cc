#include "ui/confirm-panel.h"
