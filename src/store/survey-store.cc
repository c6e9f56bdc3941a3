#include "store/survey-store.h"
