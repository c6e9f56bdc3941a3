#include "ui/species-instructions.h"
