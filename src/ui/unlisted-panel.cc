#include "ui/unlisted-panel.h"
