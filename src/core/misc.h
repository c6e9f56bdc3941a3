#pragma once

// The chief header of this folder.
#include "core/c-resource.h"
#include "core/displayed-text.h"
#include "core/exception-report.h"
#include "core/file-contents.h"
#include "core/launch.h"
#include "core/markup.h"
#include "core/message-dialog.h"
#include "core/my-app.h"
#include "core/number.h"
#include "core/report.h"
#include "core/ret-code.h"
#include "core/text.h"
#include "core/version.h"
#include "core/widget-helpers.h"
