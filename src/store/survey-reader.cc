#include "store/survey-reader.h"
