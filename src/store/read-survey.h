#pragma once

#include "store/survey-fields.h"

#include <string>

// Functions that read survey documents. They need no reference data, so the caller checks
// whether the data have the location and the choices.

// One entry of a document: the value of a field, or a species.
struct SurveyElement {
  const SurveyField* field = nullptr; // null for a species
  Glib::ustring text;                 // the value of the field
  bool confirmed = false;             // whether the user has confirmed the bottom time
  // Surveys of older versions have only one depth. It is the maximum in some locations and the
  // average in others. This is the field of the other depth, which gets no value.
  const SurveyField* emptied = nullptr;
  SpeciesSighting species;
};

// The entries of a document in their order, up to the first fault.
struct SurveyReading {
  std::vector<SurveyElement> elements;
  Glib::ustring fault; // the fault of the next entry; empty if all entries were read
};

// Reads the entries of the file at `path`. Throws the exceptions of parse_survey_file().
SurveyReading read_survey_elements(const std::string& path);

// Reads the fields of the file at `path` for a list of surveys. Skips unknown elements and the
// species, which take most of the time. Throws the exceptions of parse_survey_file().
std::vector<SurveyElement> read_survey_head(const std::string& path);

// Throws a text if the location is wrong: if its code is empty, or if it follows a species. A
// change of the location would remove the preceding species.
void check_location(const Glib::ustring& code, bool follows_species);

// Returns the survey in the file at `path`. If an element is repeated, uses the last one. If an
// element is missing, its entry has the value of a new survey. Throws the exceptions of
// parse_survey_file(), or a text that describes the first fault in the document.
Survey read_survey(const std::string& path);
// Does the same for the content of a file.
Survey read_survey_bytes(const std::string& contents);
