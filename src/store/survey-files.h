#pragma once

#include "core/ret-code.h"

#include <functional>
#include <string>
#include <vector>

class DataDefs;
class RegionInfo;

// The saved surveys: files in the directories of a store, one for each state of a survey.

enum class SurveyState {
  IN_PROGRESS = 1,
  READY_TO_UPLOAD = 2,
  UPLOADED = 3,
  ROOT = 4,         // the store as a whole
  NOT_A_SURVEY = 5, // a heading of the list of surveys, or nothing selected
};

// The store of this user, whether it exists or not; no trailing slash.
std::string default_survey_root();

// What the path of a state's directory has behind that of the store, such as "/Uploaded".
const char* directory_suffix(SurveyState state);

// The directory of a state in the store at `root`, without trailing slash, made if need be.
// A failure to make it is not reported. An empty `root` becomes that of this user.
std::string survey_directory(std::string& root, SurveyState state);

// Calls `visit` with the full path of each entry in a directory, in the order in which the
// directory lists them. Throws a Glib::Error if the directory cannot be read.
void visit_survey_files(const std::string& directory,
                        const std::function<void(const std::string&)>& visit);

// The full paths of all entries in a directory, in byte order. Throws as
// visit_survey_files() does.
std::vector<std::string> list_survey_files(const std::string& directory);

// A saved survey in one line of plain text, empty if the file is not a valid one. With
// `member_id` the member is left out of the line and stored there instead: -1 if the file
// could not be read so far, 0 if the survey names none.
std::string describe_survey_file(const std::string& path, const RegionInfo& regions,
                                 const DataDefs& defs, int* member_id);

// One line for each path: its description, or the path where there is none. The line of the
// path `current` says that it is the current survey. Plain text.
std::string describe_survey_files(const std::vector<std::string>& paths, const std::string& current,
                                  const RegionInfo& regions, const DataDefs& defs);

// Moves the survey at `path` into the directory of a state in the store at `root` and sets
// `path` to its new place. In Uploaded, a file of the same name is replaced. Elsewhere it
// stays, and the moved survey takes the next free number. Failures have been reported on
// return; `path` is then unchanged.
RetCode move_survey_file(std::string& path, std::string& root, SurveyState state);
