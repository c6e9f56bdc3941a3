#pragma once

#include "core/ret-code.h"
#include "store/survey-files.h"

#include <glibmm/refptr.h>
#include <glibmm/ustring.h>

#include <functional>
#include <string>
#include <vector>

namespace Gdk {
class Pixbuf;
}
namespace Gtk {
class Application;
}
class AbundanceChoices;
class DataDefs;
class DataFileInfo;
class DataParams;
class HabitatInfo;
class RegionInfo;
class SpeciesViews;
struct ReferenceData;

// The depth that makes a survey a snorkel survey: a label of the depth list.
extern const Glib::ustring MAGIC_SNORKEL_DEPTH;
// What stands behind the name of a survey type that is offered no more.
extern const Glib::ustring NO_LONGER_AVAILABLE;

// The application object: the reference data in use, the server's addresses
// and the places where data and surveys live. One per process, a local of main;
// every window points to it.
class MyApp
{
public:
  // The state of a saved survey, that is the directory that its file lies in.
  using WhichDir = SurveyState;
  static constexpr WhichDir WD_IN_PROGRESS = SurveyState::IN_PROGRESS;
  static constexpr WhichDir WD_READY_TO_UPLOAD = SurveyState::READY_TO_UPLOAD;
  static constexpr WhichDir WD_UPLOADED = SurveyState::UPLOADED;
  static constexpr WhichDir WD_ROOT = SurveyState::ROOT;
  static constexpr WhichDir WD_NOT_A_SURVEY = SurveyState::NOT_A_SURVEY;

  // Reads the reference data and loads the icons. Does not return if the data
  // cannot be read.
  explicit MyApp(Glib::RefPtr<Gtk::Application> app);
  ~MyApp();
  MyApp(const MyApp&) = delete;
  MyApp& operator=(const MyApp&) = delete;

  // --- reference data (data/reference-data.h) ---

  // Chooses the newer data set and loads all its tables. Old tables stay alive
  // for windows that still use them. Result: RET_SUCCESS or RET_FAILURE.
  RetCode read_data_files();
  // The tables in use, for a new window.
  ReferenceData reference_data() const;
  // This user's directory of downloaded data, made if need be; no trailing slash.
  std::string get_local_data_dir();

  // --- the survey store (store/survey-files.h) ---

  // The directory of a state, without trailing slash, made if need be. A
  // failure to make it is not reported.
  std::string get_survey_dir(WhichDir which);
  // Calls `visit` with the full path of each entry in the directory of a state,
  // in the order in which the directory lists them. Throws a Glib::Error if the
  // directory cannot be read.
  void visit_surveys(WhichDir which, const std::function<void(const std::string&)>& visit);
  // The full paths of all entries of Ready To Upload, in byte order. Throws as
  // visit_surveys() does.
  std::vector<std::string> get_ready_survey_list();
  // One line for each path: its description, or the path where there is none.
  // `current` is the path of the survey in the window and is marked so. Plain
  // text: escape it where it becomes part of a dialog's markup.
  std::string prettify_survey_list(const std::vector<std::string>& list,
                                   const std::string& current);
  // A saved survey in one line of plain text, empty if the file is not a valid one. With
  // `member_id` the member is left out of the line and stored there instead:
  // -1 if the file could not be read so far, 0 if the survey names none.
  std::string get_survey_description(const std::string& path, int* member_id);
  // Moves the survey at `path` and sets `path` to its new place. In Uploaded, a file
  // of the same name is replaced. Elsewhere it stays, and the moved survey takes
  // the next free number. Failures have been shown on return; `path` is then
  // unchanged.
  RetCode move_survey_to(WhichDir which, std::string& path);

  // The tables are read-only after loading and never freed.
  DataFileInfo* data_file_info = nullptr;
  DataDefs* data_defs = nullptr;
  DataParams* data_params = nullptr;
  RegionInfo* region_info = nullptr;
  HabitatInfo* habitat_info = nullptr;
  SpeciesViews* species_views = nullptr;
  AbundanceChoices* abundance_choices = nullptr;

  std::string upload_url;
  std::string version_query_url; // what is asked for is appended
  std::string data_entry_url;    // the page where members submit what they uploaded
  Glib::RefPtr<Gtk::Application> app;
  std::string survey_root;    // empty until first asked for
  std::string local_data_dir; // empty until first asked for

  // The program's logo in five sizes, for windows and dialogs.
  static std::vector<Glib::RefPtr<Gdk::Pixbuf>> icon_list;
};
