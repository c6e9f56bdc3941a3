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

// The label in the list of depths that marks a survey as a snorkel survey.
extern const Glib::ustring MAGIC_SNORKEL_DEPTH;
// The suffix of the name of a survey type that is no longer offered.
extern const Glib::ustring NO_LONGER_AVAILABLE;

// The application object. It contains the reference data in use, the server's addresses and
// the directories of data and surveys. run_program() in main.cc owns the only object, and every
// window has a pointer to it.
class MyApp
{
public:
  // The state of a saved survey, which is the directory of its file.
  using WhichDir = SurveyState;
  static constexpr WhichDir WD_IN_PROGRESS = SurveyState::IN_PROGRESS;
  static constexpr WhichDir WD_READY_TO_UPLOAD = SurveyState::READY_TO_UPLOAD;
  static constexpr WhichDir WD_UPLOADED = SurveyState::UPLOADED;
  static constexpr WhichDir WD_ROOT = SurveyState::ROOT;
  static constexpr WhichDir WD_NOT_A_SURVEY = SurveyState::NOT_A_SURVEY;

  // Reads the reference data, loads the icons, checks the URL handlers, and installs the
  // handlers for links and late keys. Ends the process if the data cannot be read.
  explicit MyApp(Glib::RefPtr<Gtk::Application> app);
  ~MyApp();
  MyApp(const MyApp&) = delete;
  MyApp& operator=(const MyApp&) = delete;

  // --- reference data (data/reference-data.h) ---

  // Chooses the newer data set and loads all its tables. Keeps the old tables for windows
  // that still use them. Returns RET_SUCCESS or RET_FAILURE.
  RetCode read_data_files();
  // Returns the tables in use, for a new window.
  ReferenceData reference_data() const;
  // Returns this user's directory of downloaded data, without a trailing slash. Creates it
  // if it does not exist.
  std::string get_local_data_dir();

  // --- the survey store (store/survey-files.h) ---

  // Returns the directory of a state, without a trailing slash. Creates it if it does not
  // exist; does not report a failure to create it.
  std::string get_survey_dir(WhichDir which);
  // Calls `visit` with the full path of each entry in the directory of a state, in no
  // particular order. Throws a Glib::Error if the directory cannot be read.
  void visit_surveys(WhichDir which, const std::function<void(const std::string&)>& visit);
  // Returns the full paths of all entries of Ready To Upload, in byte order. Throws like
  // visit_surveys().
  std::vector<std::string> get_ready_survey_list();
  // Returns one line for each path: its description, or the path if there is none. Marks the
  // line of `current`, the path of the survey in the window, as the current survey. The
  // result is plain text: the caller escapes it for a dialog's markup.
  std::string prettify_survey_list(const std::vector<std::string>& list,
                                   const std::string& current);
  // Returns a description of a saved survey in one line of plain text, or an empty text if
  // the file is not a valid survey. If `member_id` is not null, the line omits the member,
  // and the member's number is stored there: -1 if the file could not be read that far, 0 if
  // the survey names no member.
  std::string get_survey_description(const std::string& path, int* member_id);
  // Moves the survey at `path` to the directory of `which` and sets `path` to its new path.
  // In Uploaded, it replaces a file of the same name. In the other directories it takes the
  // next free number instead. If the move fails, shows a message, leaves `path` unchanged and
  // returns RET_FAILURE.
  RetCode move_survey_to(WhichDir which, std::string& path);

  // The tables. They are read-only after loading and are never freed.
  DataFileInfo* data_file_info = nullptr;
  DataDefs* data_defs = nullptr;
  DataParams* data_params = nullptr;
  RegionInfo* region_info = nullptr;
  HabitatInfo* habitat_info = nullptr;
  SpeciesViews* species_views = nullptr;
  AbundanceChoices* abundance_choices = nullptr;

  std::string upload_url;
  std::string version_query_url; // the caller appends the platform or "data-files"
  std::string data_entry_url;    // the page where members submit what they uploaded
  Glib::RefPtr<Gtk::Application> app;
  std::string survey_root;    // empty until its first use
  std::string local_data_dir; // empty until its first use

  // The program's logo in five sizes, for windows and dialogs; null if a file is missing.
  static std::vector<Glib::RefPtr<Gdk::Pixbuf>> icon_list;
};
