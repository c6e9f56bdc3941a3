#include "core/file-contents.h"
