#include "ui/survey-window.h"
