#pragma once

// Installs the presenter that shows each report of core/report.h in a modal dialog: a warning
// with an OK button or, if the report is fatal, an error with a Close button. The presenter
// returns when the user has closed the dialog. Before GTK is initialised, or without a
// display, it shows nothing.
void install_report_dialog();
