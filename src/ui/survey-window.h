#pragma once

#include "core/my-app.h"
#include "core/report.h"
#include "data/reference-data.h"
#include "store/survey-record.h"
#include "ui/field-widgets.h"
#include "ui/species-columns.h"
#include "ui/window-place.h"

#include <atkmm/object.h>
#include <gtkmm/aboutdialog.h>
#include <gtkmm/action.h>
#include <gtkmm/actiongroup.h>
#include <gtkmm/box.h>
#include <gtkmm/builder.h>
#include <gtkmm/button.h>
#include <gtkmm/filechooserdialog.h>
#include <gtkmm/label.h>
#include <gtkmm/menu.h>
#include <gtkmm/notebook.h>
#include <gtkmm/scrolledwindow.h>
#include <gtkmm/toggleaction.h>
#include <gtkmm/treestore.h>
#include <gtkmm/treeview.h>
#include <gtkmm/uimanager.h>
#include <gtkmm/window.h>

#include <map>
#include <string>
#include <vector>

class ConfirmPanel;
class ListedPanel;
class MemberPanel;
class StartPanel;
class SurveyPanel1;
class SurveyPanel2;
class UnlistedPanel;
struct Survey;
// Of the HTTP library, see server/http.h.
using SoupSession = struct _SoupSession; // NOLINT(bugprone-reserved-identifier)

// The index in SurveyWindow::abundance_menus of the menu for species of which only the
// presence is recorded.
constexpr int PRESENCE_MENU_INDEX = AbundanceChoices::presence_subtype;

// A window with one survey: a notebook of seven panels, a menu bar, and buttons that turn the
// pages and save. A window is hidden when it is created, shown when it is ready, and hidden
// again when it is closed. It is never deleted.
//
// The builder owns the widgets that the pointers refer to. A panel accesses another panel
// through the members of this class.
class SurveyWindow : public Gtk::Window
{
public:
  // What the user sees after a save.
  enum DoSaveFlags {
    SAVE_ASK_NEXT = 0, // where it was saved, and what to do next
    SAVE_QUIET = 1,
    SAVE_NOTIFY = 2, // where it was saved
  };
  // The action after a check for updates. The first three are also responses of dialogs.
  enum ResponseCode {
    RESPONSE_NEW_SURVEY = 1,
    RESPONSE_QUIT = 2,
    RESPONSE_OPEN_SURVEY = 3,
    RESPONSE_NONE = 4,
  };

  // Returns a new, hidden window with an empty survey. Ends the process if the definition file
  // is missing or wrong.
  static SurveyWindow* create(MyApp& app);

  SurveyWindow(BaseObjectType* cobject, const Glib::RefPtr<Gtk::Builder>& builder);
  ~SurveyWindow() override;

  // --- the window and its actions (src/ui) ---

  // Creates the menus and the panels. Call it once, after the constructor.
  void ctor_continued(const Glib::RefPtr<Gtk::Builder>& builder, MyApp* app);
  // Create an action for a submenu, a menu item or a toggle, and store it under `name`. `stock`
  // provides icon and accelerator; it may be empty.
  void create_menu_action(const std::string& name, const std::string& label);
  void create_action(const std::string& name, const std::string& label,
                     void (SurveyWindow::*handler)(const std::string&), const std::string& tooltip,
                     const Gtk::StockID& stock);
  void create_action(const std::string& name, const std::string& label,
                     void (SurveyWindow::*handler)(const std::string&,
                                                   Glib::RefPtr<Gtk::ToggleAction>),
                     const std::string& tooltip, const Gtk::StockID& stock);
  // REQUIRES, for both: `name` is the name of an existing action.
  void menuitem_enable(const char* name, bool enabled);
  void menuitem_check(const char* name, bool checked);
  // Creates one panel from the definition file, appends it to the notebook and stores it in
  // `member`. Ends the process if the definition file lacks the panel.
  template<typename T>
  void make_panel(const Glib::RefPtr<Gtk::Builder>& builder, T*& member, const char* id,
                  const Glib::ustring& tab_label);
  // Shows the date, the start and the zone of the survey in the window's title.
  void set_title_string();

  // Updates buttons and tooltips for the page to which the notebook turns. On the Confirmation
  // page, also checks the survey.
  void on_switch_page(Gtk::Widget* page, unsigned int page_number);
  // Turns the page for Ctrl+Page Down and Ctrl+Page Up, wherever the focus is. Returns whether
  // the key was one of these.
  bool on_page_key(GdkEventKey* event);
  // Save the survey to In Progress or to Ready To Upload.
  void on_save_button();
  void on_ready_button();
  // Saves the survey and uploads it. If other surveys are ready, too, asks the user whether to
  // upload all of them. If the survey is incomplete, only shows what is missing.
  void on_upload_button();
  void on_back_button();
  // Turns to the next page. On the first page, opens the selected survey instead, if there is one.
  void on_next_button();
  // Asks the user about unsaved changes. Returns true to keep the window open.
  bool on_delete_event(GdkEventAny* event) override;
  // Shows the description of the survey under the dialog's cursor in `preview`, or hides it if
  // the file is not a survey.
  void on_filedlg_update_preview(Gtk::FileChooserDialog* dialog, Gtk::Label* preview);

  // Handlers of the menu items. `action` is the name of the action.
  void on_action_FileOpen(const std::string& action);
  void on_action_FileDelete(const std::string& action);
  void on_action_FileNew(const std::string& action);
  void on_action_FileSaveForLater(const std::string& action);
  void on_action_FileSaveForUpload(const std::string& action);
  void on_action_FileUploadThis(const std::string& action);
  void on_action_FileUploadAll(const std::string& action);
  void on_action_FileClose(const std::string& action);
  void on_action_FileQuit(const std::string& action);
  void on_action_EditCut(const std::string& action);
  void on_action_EditCopy(const std::string& action);
  void on_action_EditPaste(const std::string& action);
  void on_action_ViewToolbar(const std::string& action, Glib::RefPtr<Gtk::ToggleAction> toggle);
  void on_action_HelpInstructions(const std::string& action);
  void on_action_HelpContact(const std::string& action);
  void on_action_HelpCheckForUpdates(const std::string& action);
  void on_action_HelpReleaseNotes(const std::string& action);
  void on_action_HelpAbout(const std::string& action);

  // --- abundances (src/ui/abundance-menu.cc) ---

  // Creates one menu for each survey type that has abundance classes.
  void build_abundance_menus();
  // Opens the abundance menu for a species at the pointer.
  void popup_abundance_menu(int species_id, int button, guint32 time);
  // Opens the abundance menu for a species beside its row in the tree. The row need not be
  // visible yet: the menu follows it.
  void popup_abundance_menu_beside(Gtk::TreeView& tree, const Gtk::TreePath& row, int species_id,
                                   guint32 time);
  // Sets the abundance of the species for which the menu was opened.
  void on_abundance_menu_item(int abundance);
  // Callbacks of TreeModel::foreach_iter that update the row of one species, or of all. They
  // return true to end the walk.
  bool update_row_from_abundance(const Gtk::TreeIter& iter, int id);
  bool update_from_abundance(const Gtk::TreeIter& iter);

  // --- document and store (src/store) ---

  // Returns the entries of the panels without the species.
  Survey entered_survey() const;
  // Stores the document of the current entries in survey.xml_current. `omit_member` leaves out
  // the member details. On failure, stores the reason in `error_text` and does not change
  // xml_current.
  RetCode generate_xml_string(Glib::ustring& error_text, bool omit_member);
  // Saves the survey to the directory of `which`. Shows failures. Returns RET_DECLINED if the
  // user does not want to save a survey without its year.
  RetCode do_save(MyApp::WhichDir which, DoSaveFlags flags);
  // Returns whether the survey has unsaved changes.
  bool file_needs_saving();
  // Asks the user about unsaved changes, and saves them if the user agrees. Returns whether the
  // caller may continue: there are no changes, they are saved, or the user discards them.
  // `doing_what` completes the sentences of the question.
  bool check_file_save_okay(const Glib::ustring& doing_what);
  // Writes `size` bytes to a file. Shows failures.
  RetCode write_file(const std::string& path, const char* data, unsigned long size);
  // Loads a saved survey into this window. Shows failures. REQUIRES: the window is new.
  RetCode do_open(std::string path);
  // Lets the user choose a survey and opens it in a new window.
  RetCode select_and_open_saved_survey();
  // Makes the survey read-only.
  void set_survey_is_uploaded();
  // Asks the user and then deletes the file. Returns whether the file is deleted.
  bool maybe_delete_survey(const std::string& path);

  // --- server (src/server) ---

  // Uploads a saved survey as it is on the disk. If the server accepts it, moves the file to
  // Uploaded. Shows failures.
  RetCode do_upload_file(const std::string& path);
  // Uploads a survey, shows a message if that succeeds, and checks for updates in any case.
  void do_upload_single(const std::string& path);
  // Uploads the surveys one after the other. Moves each one that fails to In Progress and asks
  // the user whether to continue. At the end, shows the result and checks for updates.
  void do_upload_all_ready(const std::vector<std::string>& list);
  // Checks for updates at the user's request. First asks about unsaved changes.
  void manual_check_for_updates();
  // Asks the server for a newer program and newer data, installs the data if the user
  // agrees, and then does `next` in any case. `action` completes the question about what the
  // user was going to do; it is null if there is no such action.
  RetCode check_for_updates(const char* action, ResponseCode next);
  // Downloads the archive at `url`, unpacks it and loads the data. Returns RET_DATA_INSTALLED
  // if the tables are new. Shows failures.
  RetCode download_data_files(SoupSession* session, const char* url);

  MyApp* my_app = nullptr;
  // The tables with which this window was created. The window uses only these, so that
  // everything in it comes from one data set. After an update, the application's tables are
  // those of the newer data.
  ReferenceData reference_data;
  SurveyData survey;
  FieldWidgets fields; // of the panels below
  Gtk::Notebook* notebook = nullptr;
  Gtk::Button* save_button = nullptr;
  Gtk::Button* ready_button = nullptr;
  Gtk::Button* upload_button = nullptr;
  Gtk::Button* back_button = nullptr;
  Gtk::Button* next_button = nullptr;
  StartPanel* start_panel = nullptr;
  MemberPanel* member_panel = nullptr;
  SurveyPanel1* survey_panel1 = nullptr;
  SurveyPanel2* survey_panel2 = nullptr;
  ListedPanel* listed_panel = nullptr;
  UnlistedPanel* unlisted_panel = nullptr;
  ConfirmPanel* confirm_panel = nullptr;
  Gtk::AboutDialog* about_dialog = nullptr;
  Gtk::Dialog* contact_dialog = nullptr;
  Gtk::Dialog* instructions_dialog = nullptr; // shows instructions and release notes
  Gtk::Box* survey_window_box = nullptr;
  Gtk::Box* uploaded_bar = nullptr;           // visible if the survey has been uploaded
  Gtk::Label* program_instructions = nullptr; // the text in instructions_dialog
  Glib::ustring base_title;                   // the program's own title
  WindowPlace place{*this};

  SpeciesTreeColumns species_columns;
  Glib::RefPtr<Gtk::TreeStore> listed_model;   // the species of the view
  Glib::RefPtr<Gtk::TreeStore> unlisted_model; // all species that can be marked

  std::map<std::string, Glib::RefPtr<Gtk::Action>> actions;
  std::map<std::string, Glib::RefPtr<Gtk::ToggleAction>> toggle_actions;
  Glib::RefPtr<Gtk::ActionGroup> action_group;
  Glib::RefPtr<Gtk::UIManager> ui_manager;
  Gtk::Widget* menubar = nullptr;
  Gtk::Widget* toolbar = nullptr;

  std::vector<Gtk::Menu*> abundance_menus; // by survey type id; null for an empty list
  Gtk::Menu* current_abundance_menu = nullptr;
  int abundance_target = -1; // the species of the open menu

private:
  void show_loaded_species();
  void create_actions();
  // Returns false and prints the reason if the menus cannot be built.
  bool build_menus();
  // Returns null if the description of the menus lacks the widget.
  Gtk::Widget* pack_on_top(const char* ui_path);
  void find_dialogs(const Glib::RefPtr<Gtk::Builder>& builder);
  void find_navigation(const Glib::RefPtr<Gtk::Builder>& builder);
  void make_panels(const Glib::RefPtr<Gtk::Builder>& builder);
  // Sets the icons and the version line.
  void label_windows();
  // Make the current entries count as unchanged. remember_as_new_survey() is for a survey with
  // copied member details, which then do not count as entries.
  void remember_as_unchanged();
  void remember_as_new_survey();
  // Stores the document of the entries and of the survey's species in survey.xml_current. Fails
  // like generate_xml_string().
  RetCode build_document(Survey entered, Glib::ustring& error_text);
  // Returns all entries as text, including species that a document cannot contain.
  Glib::ustring entered_text() const;
  // Copies member details, location, survey type and name buttons to a new survey.
  void carry_over_to(SurveyWindow& next) const;
  // Turns to the first page that a new survey still needs.
  void go_to_first_question();
  void show_help_text(const char* what, const char* path, const Glib::ustring& title);
  // Saves a complete survey to the queue. If the survey is incomplete, shows what is missing.
  // Returns whether the survey is in the queue. Shows failures.
  bool save_for_upload();
  // Moves a survey to In Progress.
  void take_out_of_queue(const std::string& path);
  // Returns a line of markup for each survey.
  std::string described(const std::vector<std::string>& surveys) const;
  // Does `next` after a check for updates with this result. Returns the overall result.
  RetCode go_on_after_check(RetCode result, ResponseCode next);
  // Replaces this window with one that uses the new tables.
  void swap_window();
  Gtk::Menu* make_abundance_menu(int subtype, const std::vector<AbundanceChoices::Choice>& choices);
  Gtk::Menu* abundance_menu_for(int species_id) const;
  // Returns the menu for the species and makes the species its target. If there is no menu,
  // informs the user and returns null.
  Gtk::Menu* prepare_abundance_menu(int species_id);

  // Keeps the menu beside its row while the tree scrolls.
  sigc::connection menu_follows_row;
  // The software_platform() of the last generated document. A check for unsaved changes reuses
  // it.
  Glib::ustring platform;
  // The entered_text() at the time when the user last chose not to save it.
  Glib::ustring discarded_text;
  // The entered_text() of a survey at its opening, if the data cannot generate its document.
  Glib::ustring unwritable_as_opened;
};

template<typename T>
void SurveyWindow::make_panel(const Glib::RefPtr<Gtk::Builder>& builder, T*& member, const char* id,
                              const Glib::ustring& tab_label)
{
  member = nullptr;
  builder->get_widget_derived(id, member);
  if (!member)
    fatal("Failed to find %s in UI", id);
  member->ctor_continued(builder, this);

  auto* scrolled = Gtk::make_managed<Gtk::ScrolledWindow>();
  scrolled->add(*member);
  scrolled->get_accessible()->set_name(tab_label); // it has the focus if nothing else can have it
  scrolled->show();
  scrolled->get_child()->hide(); // until the user turns to the page
  member->page = notebook->append_page(*scrolled, tab_label);
}
