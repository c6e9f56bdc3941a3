#include "ui/survey-panel1.h"
