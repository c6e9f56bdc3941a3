#pragma once

#include <string>
#include <vector>

#include "cli/finding.h"

// The survey files that the arguments of a command mean: files, and all files below
// directories whose names end like those of surveys (.MAVO-Survey, .MAVO_survey or .xml) and
// do not begin with a dot. Without an argument this user's store is meant. Each path comes once,
// in byte order. The files that are left out are added to `left_out` as hints. Directories are
// not followed through symbolic links. Throws CouldNotRun if an argument cannot be read.
std::vector<std::string> survey_paths(const std::vector<std::string>& arguments,
                                      std::vector<Finding>& left_out);

// Whether the file's name ends like that of a survey and does not begin with a dot.
bool is_survey_path(const std::string& path);

// The name of the directory that a path lies in if it is that of a state, such as "Uploaded";
// else empty.
std::string state_of(const std::string& path);
