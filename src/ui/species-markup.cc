#include "ui/species-markup.h"
