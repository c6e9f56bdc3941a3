#include "ui/survey-panel2.h"
