#pragma once

// The chief header of this folder. SurveyWindow declares the operations of the exchange.
#include "server/data-archive.h"
#include "server/http-library.h"
#include "server/http.h"
