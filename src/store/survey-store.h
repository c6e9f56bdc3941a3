#pragma once

// Chief header of this folder; MyApp declares the store's own operations.
#include "store/file-identity.h"
#include "store/replace-file.h"
#include "store/survey-description.h"
#include "store/survey-document.h"
#include "store/survey-file-dialog.h"
#include "store/survey-file-name.h"
#include "store/survey-files.h"
#include "store/survey-head-parser.h"
#include "store/survey-loader.h"
#include "store/survey-parser.h"
#include "store/survey-reader.h"
#include "store/survey-record.h"
#include "store/survey-xml-info.h"
#include "store/unlisted-year.h"
