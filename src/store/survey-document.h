#pragma once

#include "store/survey-record.h"

#include <vector>

// What the panels hold of a survey, as the document stores it: texts as typed,
// ids of chosen entries (-1 or, for the date, 0 where nothing is chosen).
struct SurveyForm {
  Glib::ustring member_id;
  Glib::ustring last_name;
  Glib::ustring subregion;
  int survey_subtype = -1;
  int year = 0;
  int month = 0;
  int mday = 0;
  int dive_start = -1;
  Glib::ustring zonecode;
  Glib::ustring surface_temp;
  Glib::ustring bottom_temp;
  Glib::ustring temp_units; // "F" or "C"; empty counts as "F"
  Glib::ustring bottom_time;
  bool bottom_time_confirmed = false;
  int visibility = -1;
  int avg_depth = -1;
  int max_depth = -1;
  int current = -1;
  int habitat = -1;
  int species_view = -1;
};

// One species of a document.
struct SpeciesSighting {
  int id;
  int abun; // abundance class
  int resp; // the same class in the server's numbering
};

// The sightings that the document of `survey` lists, by ascending species id.
// Throws a Glib::ustring if an abundance has no response id in the data.
std::vector<SpeciesSighting> species_sightings(const SurveyData& survey,
                                               const AbundanceChoices& choices);

// The first line of "uname -a", empty if it cannot be run.
Glib::ustring software_platform();

// The survey document, as the whole text of its file. Characters that XML 1.0
// cannot hold (control characters that came in by pasting) are left out of the
// texts, since a document with them could never be opened again.
Glib::ustring survey_document(const SurveyForm& form, const std::vector<SpeciesSighting>& species,
                              const Glib::ustring& platform);
