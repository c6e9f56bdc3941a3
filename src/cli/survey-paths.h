#pragma once

#include <string>
#include <vector>

#include "cli/finding.h"

// Returns the paths of the survey files that the arguments of a command select, in byte order
// and without duplicates. An argument is a file or a directory, which is searched recursively
// for survey files (is_survey_path()). Without arguments, the function searches this user's
// store. It does not follow symbolic links to directories. It adds each skipped file to
// `left_out` as a hint. Throws CouldNotRun if an argument cannot be read.
std::vector<std::string> survey_paths(const std::vector<std::string>& arguments,
                                      std::vector<Finding>& left_out);

// Returns whether the name of the file has an extension of surveys (.MAVO-Survey, .MAVO_survey
// or .xml) and does not begin with a dot.
bool is_survey_path(const std::string& path);

// Returns the name of the directory of a file if it is the name of a state, such as "Uploaded",
// else an empty text.
std::string state_of(const std::string& path);
