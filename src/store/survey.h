#pragma once

#include <glibmm/ustring.h>

#include <vector>

// One species of a survey, as the document stores it.
struct SpeciesSighting {
  int id = 0;
  int abun = 0; // abundance class; 0: seen no more
  int resp = 0; // the same class in the server's numbering
};

// A whole survey: what its document holds, in the document's terms. Texts are as typed.
// A choice is the id of the chosen entry: -1, or 0 for month and day, where nothing is chosen.
struct Survey {
  Glib::ustring member_id;
  Glib::ustring last_name;
  Glib::ustring subregion;
  int survey_subtype = -1;
  Glib::ustring year = "0000"; // four digits; "0000" where none is chosen
  int month = 0;
  int mday = 0;
  int dive_start = -1;
  Glib::ustring zonecode;
  Glib::ustring surface_temp;
  Glib::ustring bottom_temp;
  Glib::ustring temp_units = "F"; // or "C"
  Glib::ustring bottom_time;
  bool bottom_time_confirmed = false;
  int visibility = -1;
  int avg_depth = -1;
  int max_depth = -1;
  int current = -1;
  int habitat = -1;
  int species_view = -1;
  std::vector<SpeciesSighting> species; // by ascending id
};
