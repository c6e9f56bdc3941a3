#pragma once

#include <string>

// Throws CouldNotRun if `path` leads into this user's store, or into a directory that is
// called like that of a state: the program would take a result there for a survey. An empty
// path is none.
void keep_out_of_store(const std::string& path);
