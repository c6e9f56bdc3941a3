#pragma once

// Installs the presenter that shows each report of core/report.h in a modal dialog. The
// report returns when the user has closed the dialog: a warning with OK or, if the report is
// fatal, an error with Close. Before GTK is initialised, or without a display, it shows
// nothing.
void install_report_dialog();
