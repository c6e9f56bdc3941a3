#include "ui/species-columns.h"
