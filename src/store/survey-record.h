#pragma once

#include "data/abundance-choices.h"

#include <glibmm/ustring.h>

#include <map>
#include <string>

class RegionFishInfo;
struct Region;
struct SubregionInfo;

// One survey while it is being edited, as far as the panels do not hold it.
// The pointers look into the reference data.
struct SurveyData {
  SurveyData() = default;
  SurveyData& operator=(SurveyData&& other) noexcept(false);

  Glib::ustring region;
  Glib::ustring subregion; // empty: no location chosen, so it cannot be saved
  RegionFishInfo* region_fish = nullptr;
  SubregionInfo* subregion_info = nullptr;
  Region* survey_subtype = nullptr; // null while none is chosen
  AbundanceChoices::SurveySubtypeChoiceInfo* abundance_choices = nullptr;
  int species_view_id = -1;

  std::string filename;  // where it was last saved to or opened from; empty: nowhere
  std::string file_etag; // the file's entity tag as of the last save; empty: unknown

  Glib::ustring xml_current;    // the latest generated document
  Glib::ustring xml_last_saved; // the document as saved or opened
  Glib::ustring xml_pristine;   // the document in which nothing has been entered yet

  bool show_fish = false;
  bool show_inverts = false;
  bool show_common_name = false;
  bool show_scientific_name = false;
  bool show_spanish_name = false;
  bool survey_complete = false; // the last check found nothing missing
  bool is_uploaded = false;     // read-only from then on

  // Species id to abundance: the only record of what was seen. An abundance of
  // 0 is a species that has none at present.
  std::map<int, int> abundances;

  // The path of a save that failed, while `filename` names it: a file there is
  // not this survey's own. Empty: none failed.
  std::string unwritten_path;
  std::string written_text; // what the window last wrote to its file; empty: nothing yet
  // The year in the document that was opened, if the list of years lacks it.
  Glib::ustring unlisted_year;
};
