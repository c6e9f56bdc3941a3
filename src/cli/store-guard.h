#pragma once

#include <string>

// Throws CouldNotRun if a result must not be written to `path`: if it is in this user's store
// or in a directory that has the name of a state. The program would treat a file there as a
// survey. Accepts an empty path.
void keep_out_of_store(const std::string& path);
