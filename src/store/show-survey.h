#pragma once

#include "store/read-survey.h"

class SurveyWindow;

// Shows the entries of a document in the panels of a new window. Sets the widgets in the order
// of the document, and the handlers of the panels react to each change. Throws a text at the
// first fault. Then the window is incomplete, and the caller must not show it.
void show_survey(const SurveyReading& reading, SurveyWindow& window);
