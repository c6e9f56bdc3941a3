#pragma once

#include <glibmm/ustring.h>

// The identity of the survey document's format.
struct SurveyXMLinfo {
  // Returns the version that the program writes, as "major.minor".
  Glib::ustring get_current_version_str() const;

  Glib::ustring root_tag = "MAVO-Survey";
  int current_major = 1;
  int current_minor = 0;
  int oldest_major = 0; // the oldest version that the program reads
  int oldest_minor = 2;
};
