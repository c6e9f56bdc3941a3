#pragma once

class SurveyWindow;

// A survey whose year the list of years lacks, since the clock of this computer
// is behind or the document is wrong, is shown without a year. Both functions do
// nothing for other surveys.

// Says so, once the survey has been opened.
void report_unlisted_year(const SurveyWindow& window);

// Asks whether the survey may be saved without its year, unless one has been
// chosen by now. Whether it may.
bool may_be_saved_without_its_year(const SurveyWindow& window);
