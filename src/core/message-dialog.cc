#include "core/message-dialog.h"
