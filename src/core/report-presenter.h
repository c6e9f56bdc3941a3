#pragma once

#include <glibmm/ustring.h>

#include <string>

// The contents of one report of core/report.h.
struct Report {
  Glib::ustring title; // never empty
  std::string text;    // markup
  bool is_fatal = false;
};

// Sets the function that presents every later report. It is called after the report's line
// has been printed. Null, the initial value, means none. After a fatal report has been
// presented, the process ends.
using ReportPresenter = void (*)(const Report& report);
void set_report_presenter(ReportPresenter presenter);
