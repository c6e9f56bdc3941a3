#pragma once

#include <glibmm/ustring.h>

#include <functional>
#include <string>

struct Survey;

// The parts of the name of a survey's file.
struct SurveyFileNameParts {
  Glib::ustring member_id;
  Glib::ustring subregion;
  int year = 0; // year, month and day are 0 if they are not chosen
  int month = 0;
  int mday = 0;
  Glib::ustring dive_start; // "hhmm"; "0000" if it is not chosen
  Glib::ustring zonecode;
};

// Returns the parts of the name of a survey's file.
SurveyFileNameParts file_name_parts(const Survey& survey);

// Returns the hour at which a dive started as "hhmm". Returns "0000" for midnight, and for -1,
// which means that no hour is chosen.
Glib::ustring dive_start_text(int hour);

// The extension of survey files.
extern const std::string survey_file_extension;

// Returns the name of a survey's file without its number and extension. Uses the parts unchanged.
std::string survey_base_name(const SurveyFileNameParts& parts);

// Returns the first of stem, stem-1, stem-2, ... (each with the extension) that is `own_path`
// or for which `exists` returns false. Prints to standard output what it tried.
std::string first_free_path(const std::string& stem, const std::string& own_path,
                            const std::function<bool(const std::string&)>& exists);

// Returns the part of `path` after the last "/", or all of it if there is no "/".
std::string base_name(const std::string& path);

// Returns the file name `name` with another number: "stem-1.extension" for 1, and
// "stem.extension" for 0. Replaces a number of up to three digits at the end of the stem; a
// longer one is a zone code.
std::string renumbered_name(const std::string& name, unsigned int number);
