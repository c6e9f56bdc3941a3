#pragma once

#include "store/read-survey.h"

class SurveyWindow;

// Shows what a document says in a new window's panels, in the order of the document: each
// element sets its widget in passing, with the panels' own handlers at work. Throws a text
// at the first thing that is wrong; the window is then partly loaded and must not be shown.
void show_survey(const SurveyReading& reading, SurveyWindow& window);
