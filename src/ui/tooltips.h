#pragma once

class SurveyWindow;

// Brings the tooltips of what can be locked up to date: each says what its widget is
// for, or why it cannot be used now. Call it whenever one of these locks changes.
void show_current_tooltips(SurveyWindow& window);
