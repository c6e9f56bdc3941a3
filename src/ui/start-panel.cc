#include "ui/start-panel.h"

#include "core/report.h"
#include "core/widget-helpers.h"
#include "store/file-identity.h"
#include "ui/displayed-cell.h"
#include "ui/next-window.h"
#include "ui/plain-models.h"
#include "ui/survey-window.h"
#include "ui/tree-rows.h"

#include <cstdio>

StartPanel::StartPanel(BaseObjectType* cobject, const Glib::RefPtr<Gtk::Builder>&)
    : Gtk::Grid(cobject), store(plain_store(columns))
{
}

void StartPanel::ctor_continued(const Glib::RefPtr<Gtk::Builder>& builder, SurveyWindow* the_window)
{
  window = the_window;
  my_app = window->my_app;
  find_widgets(builder);
  connect_buttons();
  connect_tree();
  build_survey_model();
  deselect_survey();
}

void StartPanel::find_widgets(const Glib::RefPtr<Gtk::Builder>& builder)
{
  builder->get_widget("survey_tree", survey_tree);
  builder->get_widget("startp_updates_button", updates_button);
  builder->get_widget("startp_new_survey_button", new_survey_button);
  builder->get_widget("startp_upload_all_button", upload_all_button);
  builder->get_widget("startp_edit_view_button", edit_view_button);
  builder->get_widget("startp_mark_button", mark_button);
  builder->get_widget("startp_upload_button", upload_button);
  builder->get_widget("startp_delete_button", delete_button);
}

void StartPanel::connect_buttons()
{
  const auto connect = [this](Gtk::Button* button, void (StartPanel::*handler)()) {
    button->signal_clicked().connect(sigc::mem_fun(*this, handler));
  };
  connect(updates_button, &StartPanel::on_updates_button);
  connect(new_survey_button, &StartPanel::on_new_survey_button);
  connect(upload_all_button, &StartPanel::on_upload_all_button);
  connect(edit_view_button, &StartPanel::on_edit_view_button);
  connect(mark_button, &StartPanel::on_mark_button);
  connect(upload_button, &StartPanel::on_upload_button);
  connect(delete_button, &StartPanel::on_delete_button);
}

void StartPanel::connect_tree()
{
  survey_tree->set_model(store);
  survey_tree->append_column("Survey", columns.description);
  auto* const column = survey_tree->get_column(0);
  if (auto* const cell = dynamic_cast<Gtk::CellRendererText*>(column->get_first_cell()))
    limit_displayed(*column, *cell);
  survey_tree->signal_button_press_event().connect(
      sigc::mem_fun(*this, &StartPanel::on_survey_clicked), false);
  survey_tree->signal_key_press_event().connect(
      sigc::mem_fun(*this, &StartPanel::on_survey_kb_event), false);
  survey_tree->signal_popup_menu().connect(
      sigc::mem_fun(*this, &StartPanel::on_survey_kb_activated));
  selection = survey_tree->get_selection();
}

void StartPanel::build_survey_model()
{
  survey_tree->unset_model();
  store->clear();
  append_state(MyApp::WD_IN_PROGRESS, "In Progress");
  append_state(MyApp::WD_READY_TO_UPLOAD, "Ready To Upload");
  append_state(MyApp::WD_UPLOADED, "Uploaded");
  survey_tree->set_model(store);
  survey_tree->set_search_column(columns.description); // a new model resets it
  survey_tree->expand_row(Gtk::TreePath("0"), false);
  survey_tree->expand_row(Gtk::TreePath("1"), false);
}

// Reads the surveys of a state. Throws a Glib::Error if its directory cannot be read.
StartPanel::SurveysByMember StartPanel::read_surveys(MyApp::WhichDir which) const
{
  SurveysByMember surveys;
  my_app->visit_surveys(which, [&](const std::string& path) {
    int member_id = -1;
    Glib::ustring description = my_app->get_survey_description(path, &member_id);
    if (description.empty()) {
      description = "(corrupted survey file)";
      member_id = -1; // discards what was read before the failure
    }
    surveys[member_id][path] = description;
  });
  return surveys;
}

void StartPanel::append_state(MyApp::WhichDir which, const char* heading)
{
  const Gtk::TreeRow state = *store->append();
  SurveysByMember surveys;
  try {
    surveys = read_surveys(which);
  } catch (const Glib::Error& e) {
    printf("File scan: %s\n", e.what().c_str());
    columns.set(state, "", MyApp::WD_NOT_A_SURVEY, heading + Glib::ustring(" (cannot be read)"));
    return;
  }
  columns.set(state, "", MyApp::WD_NOT_A_SURVEY,
              surveys.empty() ? heading + Glib::ustring(" (none)") : heading);
  if (surveys.size() == 1) {
    add_surveys(state, which, surveys.begin()->second);
    return;
  }
  for (auto member = surveys.rbegin(); member != surveys.rend(); ++member) {
    const Gtk::TreeRow row = *store->prepend(state.children());
    columns.set(row, "", MyApp::WD_NOT_A_SURVEY, "Member ID " + std::to_string(member->first));
    add_surveys(row, which, member->second);
  }
}

// Adds the rows from the last to the first, because a store prepends in constant time but
// walks along the list to append.
void StartPanel::add_surveys(const Gtk::TreeRow& parent, MyApp::WhichDir which,
                             const std::map<std::string, Glib::ustring>& surveys)
{
  for (auto survey = surveys.rbegin(); survey != surveys.rend(); ++survey)
    columns.set(*store->prepend(parent.children()), survey->first, which, survey->second);
}

std::string StartPanel::lookup_selected_survey(MyApp::WhichDir* which)
{
  if (which)
    *which = MyApp::WD_NOT_A_SURVEY;
  const Gtk::TreePath path = cursor_path(*survey_tree);
  const Gtk::TreeIter row = path.empty() ? Gtk::TreeIter() : store->get_iter(path);
  if (!row)
    return {};
  if (which)
    *which = row->get_value(columns.which_dir);
  return row->get_value(columns.path);
}

bool StartPanel::do_survey_line_trigger(const Gtk::TreePath& path, int button,
                                        unsigned int /*time*/)
{
  const Gtk::TreeIter row = path.empty() ? Gtk::TreeIter() : store->get_iter(path);
  if (!row)
    return false;
  if (debug_level > 29)
    printf("survey selected: %s\n", row->get_value(columns.path).c_str());
  const MyApp::WhichDir which = row->get_value(columns.which_dir);
  show_actions_for(which);
  if (which == MyApp::WD_NOT_A_SURVEY && button == 1)
    toggle_row(*survey_tree, path);
  return true;
}

void StartPanel::deselect_survey()
{
  show_actions_for(MyApp::WD_NOT_A_SURVEY);
}

// Hides the button that marks a survey in progress for upload. The user must open the survey
// and save it for upload, because only the open survey is checked.
void StartPanel::show_actions_for(MyApp::WhichDir which)
{
  const bool is_survey = which != MyApp::WD_NOT_A_SURVEY;
  const bool is_ready = which == MyApp::WD_READY_TO_UPLOAD;
  edit_view_button->set_label(which == MyApp::WD_UPLOADED ? "View" : "Edit");
  edit_view_button->set_sensitive(is_survey);
  mark_button->set_label(is_ready ? "Un-Mark For Upload" : "Mark For Upload");
  mark_button->set_sensitive(is_ready || which == MyApp::WD_IN_PROGRESS);
  show_or_hide(mark_button, is_ready);
  upload_button->set_sensitive(is_ready);
  delete_button->set_sensitive(is_survey);
  show_tooltips_for(which);
}

// Sets tooltips that say what each button does, or why it cannot do it.
void StartPanel::show_tooltips_for(MyApp::WhichDir which)
{
  const char* open = "Open the selected survey";
  const char* upload = "Send the selected survey to MAVO now";
  const char* remove = "Delete the selected survey; you are asked before it is gone";
  if (which == MyApp::WD_NOT_A_SURVEY)
    open = upload = remove = "First select a survey in the list";
  else if (which == MyApp::WD_IN_PROGRESS)
    upload = "First open this survey and mark it for upload on its last page";
  else if (which == MyApp::WD_UPLOADED) {
    open = "Open the selected survey to read it";
    upload = "This survey has been uploaded";
  }
  edit_view_button->set_tooltip_text(open);
  upload_button->set_tooltip_text(upload);
  delete_button->set_tooltip_text(remove);
}

void StartPanel::on_updates_button()
{
  window->manual_check_for_updates();
}

void StartPanel::on_new_survey_button()
{
  window->on_action_FileNew("FileNew");
}

void StartPanel::on_upload_all_button()
{
  window->on_action_FileUploadAll("FileUploadAll");
}

void StartPanel::on_edit_view_button()
{
  const std::string path = lookup_selected_survey(nullptr);
  if (path.empty() || !window->check_file_save_okay("closing it to open the selected survey"))
    return;
  NextWindow next(*my_app);
  if (next.window->do_open(path) == RET_SUCCESS)
    next.take_the_place_of(*window);
}

void StartPanel::on_mark_button()
{
  MyApp::WhichDir which = MyApp::WD_NOT_A_SURVEY;
  const std::string path = lookup_selected_survey(&which);
  if (path.empty())
    return;
  if (which != MyApp::WD_READY_TO_UPLOAD) {
    puts("un-mark-for-upload is NYI"); // the text means marking for upload
    return;
  }
  const bool is_open = same_place(window->survey.filename, path);
  std::string new_path = path;
  my_app->move_survey_to(MyApp::WD_IN_PROGRESS, new_path);
  if (is_open)
    window->survey.filename = new_path;
  build_survey_model();
  deselect_survey();
}

void StartPanel::on_upload_button()
{
  const std::string path = lookup_selected_survey(nullptr);
  if (path.empty())
    return;
  if (same_place(path, window->survey.filename))
    window->on_action_FileUploadThis("FileUploadThis"); // checks and saves it first
  else
    window->do_upload_single(path);
  build_survey_model();
  deselect_survey();
}

void StartPanel::on_delete_button()
{
  const std::string path = lookup_selected_survey(nullptr);
  const bool is_open = same_place(path, window->survey.filename);
  if (path.empty() || !window->maybe_delete_survey(path))
    return;
  if (is_open) {
    window->on_action_FileNew("FileNew");
  } else {
    deselect_survey();
    survey_tree->expand_row(Gtk::TreePath("2"), false);
  }
}

bool StartPanel::on_survey_clicked(GdkEventButton* event)
{
  return do_survey_line_trigger(clicked_row_path(*survey_tree, event, "survey", 0),
                                static_cast<int>(event->button), event->time);
}

bool StartPanel::on_survey_kb_event(GdkEventKey* event)
{
  return do_survey_line_trigger(key_row_path(*survey_tree, event), 0, event->time);
}

bool StartPanel::on_survey_kb_activated()
{
  return do_survey_line_trigger(cursor_path(*survey_tree), 0, 0);
}
