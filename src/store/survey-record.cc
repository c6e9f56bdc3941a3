#include "store/survey-record.h"
