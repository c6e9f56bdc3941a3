#pragma once

// The chief header of this folder.
#include "cli/command-line.h"
#include "cli/command.h"
#include "cli/could-not-run.h"
#include "cli/data-check.h"
#include "cli/exit-status.h"
#include "cli/finding-options.h"
#include "cli/finding-writer.h"
#include "cli/finding.h"
#include "cli/loaded-data.h"
#include "cli/option-entry.h"
#include "cli/output.h"
