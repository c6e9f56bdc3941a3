#pragma once

#include "data/abundance-choices.h"

#include <glibmm/ustring.h>

#include <map>
#include <string>

class RegionFishInfo;
struct Region;
struct SubregionInfo;

// The state of the survey that the user is editing, except for the entries that the panels
// store. The reference data own the objects of the pointers.
struct SurveyData {
  SurveyData() = default;
  // Replaces the complete state.
  SurveyData& operator=(SurveyData&& other) noexcept(false);

  Glib::ustring region;
  Glib::ustring subregion; // empty if no location is chosen; such a survey cannot be saved
  RegionFishInfo* region_fish = nullptr;
  SubregionInfo* subregion_info = nullptr;
  Region* survey_subtype = nullptr; // null if none is chosen
  AbundanceChoices::SurveySubtypeChoiceInfo* abundance_choices = nullptr;
  int species_view_id = -1;

  std::string filename;  // the path of the last save or opening; empty if there was none
  std::string file_etag; // the file's entity tag after the last save; empty if it is unknown

  Glib::ustring xml_current;    // the latest generated document
  Glib::ustring xml_last_saved; // the document that was last saved or opened
  Glib::ustring xml_pristine;   // the document without any entry of the user

  bool show_fish = false;
  bool show_inverts = false;
  bool show_common_name = false;
  bool show_scientific_name = false;
  bool show_spanish_name = false;
  bool survey_complete = false; // whether the last check found no missing or wrong entry
  bool is_uploaded = false;     // whether the survey is read-only

  // Abundance classes by species id. An abundance of 0 marks a species that the user has cleared.
  std::map<int, int> abundances;

  // The path of a failed save if `filename` is that path: a file there belongs to another
  // survey. Empty if the last save has not failed.
  std::string unwritten_path;
  std::string written_text; // the text that the window last wrote to its file; can be empty
  // The year of the opened document if the list of years lacks it, else empty.
  Glib::ustring unlisted_year;
};
