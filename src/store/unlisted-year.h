#pragma once

class SurveyWindow;

// The year of a survey can be missing from the list of years, because the computer's clock
// is behind or the document is wrong. The window then shows no year. Both functions do nothing
// for other surveys.

// Informs the user of the missing year. Call it when the survey has been opened.
void report_unlisted_year(const SurveyWindow& window);

// Returns whether the survey may be saved without its year. Asks the user unless the user has
// chosen a year.
bool may_be_saved_without_its_year(const SurveyWindow& window);
