#pragma once

#include <glibmm/ustring.h>

#include <functional>
#include <string>

struct Survey;

// What a survey's file is named after.
struct SurveyFileNameParts {
  Glib::ustring member_id;
  Glib::ustring subregion;
  int year = 0; // 0: not chosen, as for month and day
  int month = 0;
  int mday = 0;
  Glib::ustring dive_start; // "hhmm", "0000" if not chosen
  Glib::ustring zonecode;
};

// The parts of the name of a survey's file.
SurveyFileNameParts file_name_parts(const Survey& survey);

// The hour at which a dive started as "hhmm"; "0000" for midnight, and for -1: not chosen.
Glib::ustring dive_start_text(int hour);

// The extension of survey files.
extern const std::string survey_file_extension;

// The name without number and extension, from the parts as they stand.
std::string survey_base_name(const SurveyFileNameParts& parts);

// The first of stem, stem-1, stem-2, ... (each with the extension) that is
// `own_path` or that does not exist. Says on standard output what it tried.
std::string first_free_path(const std::string& stem, const std::string& own_path,
                            const std::function<bool(const std::string&)>& exists);

// What follows the last "/" of `path`; all of it without one.
std::string base_name(const std::string& path);

// The file name `name` with another number: 1 gives "stem-1.extension" and 0, no
// number, "stem.extension". A number of up to three digits that the name ends in
// is replaced; zone codes are longer.
std::string renumbered_name(const std::string& name, unsigned int number);
