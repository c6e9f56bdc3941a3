#pragma once

#include <glibmm/ustring.h>

#include <vector>

// One species of a survey, as the document stores it.
struct SpeciesSighting {
  int id = 0;
  int abun = 0; // abundance class; 0 if the user has cleared the species
  int resp = 0; // the server's number of this class
};

// All entries of a survey document. Texts are as the user typed them. A choice is the id of the
// chosen item. If nothing is chosen, it is -1, but 0 for month and day.
struct Survey {
  Glib::ustring member_id;
  Glib::ustring last_name;
  Glib::ustring subregion;
  int survey_subtype = -1;
  Glib::ustring year = "0000"; // four digits; "0000" if none is chosen
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
