#include "store/survey-file-name.h"
