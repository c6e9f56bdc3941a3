#include "ui/member-panel.h"
