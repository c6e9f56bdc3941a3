#pragma once

#include "core/ret-code.h"

#include <functional>
#include <string>
#include <vector>

class DataDefs;
class RegionInfo;

// These functions work on the files of saved surveys. A store has one directory for each
// state of a survey.

// The state of a survey. The directory of its file determines it.
enum class SurveyState {
  IN_PROGRESS = 1,
  READY_TO_UPLOAD = 2,
  UPLOADED = 3,
  ROOT = 4,         // the directory of the store itself
  NOT_A_SURVEY = 5, // a heading of the list of surveys, or nothing selected
};

// Returns the path of this user's store, without a trailing slash. Does not create it.
std::string default_survey_root();

// Returns the part of the path of a state's directory that follows the path of the store, such
// as "/Uploaded". Returns an empty text for ROOT.
const char* directory_suffix(SurveyState state);

// Returns the directory of a state in the store at `root`, without a trailing slash. Creates
// it if it does not exist; does not report a failure to create it. Sets an empty `root` to
// this user's store.
std::string survey_directory(std::string& root, SurveyState state);

// Calls `visit` with the full path of each entry in a directory, in no particular order.
// Throws a Glib::Error if the directory cannot be read.
void visit_survey_files(const std::string& directory,
                        const std::function<void(const std::string&)>& visit);

// Returns the full paths of all entries in a directory, in byte order. Throws like
// visit_survey_files().
std::vector<std::string> list_survey_files(const std::string& directory);

// Returns a description of a saved survey in one line of plain text, or an empty text if the
// file is not a valid survey. If `member_id` is not null, the line omits the member, and the
// member's number is stored there: -1 if the file could not be read that far, 0 if the survey
// names no member.
std::string describe_survey_file(const std::string& path, const RegionInfo& regions,
                                 const DataDefs& defs, int* member_id);

// Returns one line of plain text for each path: its description, or the path if there is
// none. The line of the path `current` says that it is the current survey.
std::string describe_survey_files(const std::vector<std::string>& paths, const std::string& current,
                                  const RegionInfo& regions, const DataDefs& defs);

// Moves the survey at `path` to the directory of a state in the store at `root` and sets
// `path` to its new path. In Uploaded, it replaces a file of the same name. In the other
// directories it takes the next free number instead. If the move fails, shows a message, leaves
// `path` unchanged and returns RET_FAILURE.
RetCode move_survey_file(std::string& path, std::string& root, SurveyState state);
