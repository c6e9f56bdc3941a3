#pragma once

#include "data/reference-data.h"

#include <string>

// Returns the tables of the data set in `dir`. Throws CouldNotRun if the program could not use
// the set; it prints the reasons to standard error.
ReferenceData load_data_set(const std::string& dir);
