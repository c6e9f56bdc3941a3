#include "ui/zone-tree.h"
