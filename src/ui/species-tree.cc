#include "ui/species-tree.h"
