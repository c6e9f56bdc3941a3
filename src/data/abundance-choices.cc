#include "data/abundance-choices.h"
