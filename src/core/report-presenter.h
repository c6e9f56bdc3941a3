#pragma once

#include <glibmm/ustring.h>

#include <string>

// A report of core/report.h as it is presented.
struct Report {
  Glib::ustring title; // never empty
  std::string text;    // markup
  bool is_fatal = false;
};

// Sets the function that presents every later report, after its line has been printed; null,
// as at start, for none. The process ends once a fatal report has been presented.
using ReportPresenter = void (*)(const Report& report);
void set_report_presenter(ReportPresenter presenter);
