#pragma once

// From the call on, each report of core/report.h is shown in a modal dialog that has to be
// dismissed before the report returns: a warning with OK, or an error with Close if it is
// fatal. Before GTK is initialised, or without a display, nothing is shown.
void install_report_dialog();
