#pragma once

// Chief header of this folder; SurveyWindow declares the exchange's own operations.
#include "server/data-archive.h"
#include "server/http-library.h"
#include "server/http.h"
