#include "ui/species-list.h"
