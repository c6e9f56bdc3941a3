#pragma once

#include "store/survey-fields.h"

#include <string>

// Reading a survey document. Nothing here needs reference data: whether these know the
// location and the choices is for the caller to find out.

// One thing that a document says: the value of a field, or a species.
struct SurveyElement {
  const SurveyField* field = nullptr; // null: a species
  Glib::ustring text;                 // of the field
  bool confirmed = false;             // the bottom time
  // Older surveys have one depth, which is the maximum in some places and the average
  // elsewhere: the field of the other one, which is then without a value.
  const SurveyField* emptied = nullptr;
  SpeciesSighting species;
};

// What a document says, in its order, up to the first thing that is wrong.
struct SurveyReading {
  std::vector<SurveyElement> elements;
  Glib::ustring fault; // what is wrong with the next one; empty: nothing, the reading is complete
};

// Reads the file at `path`. Throws as parse_survey_file() does if it is no survey of a
// version that this program reads.
SurveyReading read_survey_elements(const std::string& path);

// Reads the fields of the file at `path` for a list of surveys. Elements that the table does
// not have are passed over, and so are the species, which are most of the work. Throws as above.
std::vector<SurveyElement> read_survey_head(const std::string& path);

// Throws a text if no survey can have its location here: its code is empty, or species
// come before it, which a change of place would forget.
void check_location(const Glib::ustring& code, bool follows_species);

// The survey in the file at `path`. An element that comes twice has the last value, an
// absent one that of a new survey. Throws as above, or a text at the first thing in
// the document that is wrong.
Survey read_survey(const std::string& path);
// The same of what such a file holds.
Survey read_survey_bytes(const std::string& contents);
