#pragma once

#include "store/survey-record.h"
#include "store/survey.h"

#include <vector>

// The sightings that the document of `survey` lists, by ascending species id.
// Throws a Glib::ustring if an abundance has no response id in the data.
std::vector<SpeciesSighting> species_sightings(const SurveyData& survey,
                                               const AbundanceChoices& choices);

// The first line of "uname -a", empty if it cannot be run.
Glib::ustring software_platform();

// The survey document, as the whole text of its file. Characters that XML 1.0
// cannot hold (control characters that came in by pasting) are left out of the
// texts, since a document with them could never be opened again. So are species that
// are seen no more.
Glib::ustring survey_document(const Survey& survey, const Glib::ustring& platform);
