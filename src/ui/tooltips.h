#pragma once

class SurveyWindow;

// Updates the tooltips of all widgets that can be insensitive. A tooltip explains the purpose of
// its widget, or why it cannot be used now. Call it after each change of their sensitivity.
void show_current_tooltips(SurveyWindow& window);
