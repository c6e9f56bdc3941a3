#include "ui/survey-tree-columns.h"
