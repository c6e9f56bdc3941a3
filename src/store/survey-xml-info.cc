#include "store/survey-xml-info.h"
