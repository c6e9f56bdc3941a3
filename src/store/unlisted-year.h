#pragma once

class SurveyWindow;

// The year of a survey can be missing from the list of years, because the computer's clock
// is behind or the document is wrong. The window then shows no year.

// Informs the user of the missing year, if it is missing. Call it when the survey has been opened.
void report_unlisted_year(const SurveyWindow& window);

// Returns whether the survey may be saved with the year that the window shows. Asks the user if
// the survey would lose its year. Returns true without a question if no year is missing, or if
// the user has chosen another one.
bool may_be_saved_without_its_year(const SurveyWindow& window);
