#pragma once

#include "data/reference-data.h"

#include <string>

// The tables of the data set in `dir`. Throws CouldNotRun if the program could not use it;
// standard error has the reasons then.
ReferenceData load_data_set(const std::string& dir);
