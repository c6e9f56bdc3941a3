#include "ui/geog-tree-columns.h"
