#include "core/my-app.h"
