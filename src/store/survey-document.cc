#include "store/survey-document.h"
