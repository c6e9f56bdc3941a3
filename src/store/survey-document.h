#pragma once

#include "store/survey-record.h"
#include "store/survey.h"

#include <vector>

// Returns the sightings for the document of `survey`, by ascending species id. Throws a
// Glib::ustring if the data have no response id for an abundance.
std::vector<SpeciesSighting> species_sightings(const SurveyData& survey,
                                               const AbundanceChoices& choices);

// Returns the first line that "uname -a" prints, or an empty text if the command fails.
Glib::ustring software_platform();

// Returns the survey document, which is the complete text of its file. Omits species that the
// user has cleared. Omits characters that XML 1.0 does not allow, such as pasted control
// characters, because no parser would accept the document. `platform` is the
// software_platform().
Glib::ustring survey_document(const Survey& survey, const Glib::ustring& platform);
