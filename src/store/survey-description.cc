#include "store/survey-description.h"
