#include "core/file-contents.h"
#include "core/version.h"
#include "core/widget-helpers.h"
#include "ui/listed-panel.h"
#include "ui/member-panel.h"
#include "ui/next-window.h"
#include "ui/survey-panel1.h"
#include "ui/survey-window.h"

#include <glibmm/error.h>
#include <gtkmm/stock.h>

#include <cstdio>

namespace {

using Handler = void (SurveyWindow::*)(const std::string&);
using ToggleHandler = void (SurveyWindow::*)(const std::string&, Glib::RefPtr<Gtk::ToggleAction>);

struct ActionRow {
  const char* name;
  const char* label;
  const char* tooltip = nullptr;
  const Gtk::BuiltinStockID* stock = nullptr; // provides icon and accelerator
  Handler handler = nullptr;                  // a row without a handler is a menu
  ToggleHandler toggle_handler = nullptr;
};

using W = SurveyWindow;
namespace Stock = Gtk::Stock;

// clang-format off
constexpr ActionRow action_rows[] = {
    {"FileMenu", "_File"},
    {"FileOpen", "_Open existing survey...", "Open saved survey file", &Stock::OPEN, &W::on_action_FileOpen},
    {"FileDelete", "_Delete saved survey...", "Delete a saved survey", &Stock::DELETE, &W::on_action_FileDelete},
    {"FileNew", "_New survey...", "Start new survey", &Stock::NEW, &W::on_action_FileNew},
    {"FileSaveForLater", "_Save survey for later", "Save survey to finish later", &Stock::SAVE, &W::on_action_FileSaveForLater},
    {"FileSaveForUpload", "Mark as _ready to upload", "Save survey for later uploading", nullptr, &W::on_action_FileSaveForUpload},
    {"FileUploadThis", "_Upload this survey", "Upload only this survey now", &Stock::NETWORK, &W::on_action_FileUploadThis},
    {"FileUploadAll", "Upload _all ready surveys", "Upload all surveys marked ready now", &Stock::NETWORK, &W::on_action_FileUploadAll},
    {"FileClose", "_Close Survey", "Close current survey", &Stock::CLOSE, &W::on_action_FileClose},
    {"FileQuit", "_Quit", "Quit program and close all windows", &Stock::QUIT, &W::on_action_FileQuit},
    {"EditMenu", "_Edit"},
    {"EditCut", "Cut", "Cut", &Stock::CUT, &W::on_action_EditCut},
    {"EditCopy", "Copy", "Copy", &Stock::COPY, &W::on_action_EditCopy},
    {"EditPaste", "Paste", "Paste", &Stock::PASTE, &W::on_action_EditPaste},
    {"ViewMenu", "_View"},
    {"ViewToolbar", "_Toolbar", "View toolbar", nullptr, nullptr, &W::on_action_ViewToolbar},
    {"WindowMenu", "_Window"},
    {"HelpMenu", "_Help"},
    {"HelpInstructions", "_Instructions", "Show information about how to use this program", &Stock::HELP, &W::on_action_HelpInstructions},
    {"HelpContact", "_Contact MAVO", "How to contact Mavo", nullptr, &W::on_action_HelpContact},
    {"HelpCheckForUpdates", "Check For _Updates", "Check MAVO web site for updated program or data files", nullptr, &W::on_action_HelpCheckForUpdates},
    {"HelpReleaseNotes", "_Release Notes", "Show what has been changed recently in this program", nullptr, &W::on_action_HelpReleaseNotes},
    {"HelpAbout", "_About MAVO Survey...", "About MAVO Survey", &Stock::ABOUT, &W::on_action_HelpAbout},
};
// clang-format on

const char* const menu_description = R"(
<ui>
  <menubar name="MenuBar">
    <menu action="FileMenu">
      <menuitem action="FileNew"/>
      <menuitem action="FileDelete"/>
      <menuitem action="FileOpen"/>
      <separator/>
      <menuitem action="FileSaveForLater"/>
      <menuitem action="FileSaveForUpload"/>
      <separator/>
      <menuitem action="FileUploadThis"/>
      <menuitem action="FileUploadAll"/>
      <separator/>
      <menuitem action="FileClose"/>
      <menuitem action="FileQuit"/>
    </menu>
    <menu action="EditMenu">
      <menuitem action="EditCut"/>
      <menuitem action="EditCopy"/>
      <menuitem action="EditPaste"/>
    </menu>
    <menu action="ViewMenu">
      <menuitem action="ViewToolbar"/>
    </menu>
    <menu action="HelpMenu">
      <menuitem action="HelpInstructions"/>
      <menuitem action="HelpContact"/>
      <menuitem action="HelpCheckForUpdates"/>
      <menuitem action="HelpReleaseNotes"/>
      <menuitem action="HelpAbout"/>
    </menu>
  </menubar>
  <toolbar name="ToolBar">
    <toolitem action="FileNew"/>
    <toolitem action="FileOpen"/>
    <toolitem action="FileSaveForLater"/>
    <toolitem action="FileSaveForUpload"/>
    <toolitem action="FileQuit"/>
    <toolitem action="FileUploadThis"/>
    <toolitem action="FileUploadAll"/>
  </toolbar>
</ui>)";

template<typename Action>
Glib::RefPtr<Action> new_action(const std::string& name, const Gtk::StockID& stock,
                                const std::string& label, const std::string& tooltip)
{
  if (stock.get_string().empty())
    return Action::create(name, label, tooltip);
  return Action::create(name, stock, label, tooltip);
}

void say_unimplemented(const std::string& action)
{
  std::printf("unimplemented menu action %s\n", action.c_str());
}

void run_and_hide(Gtk::Dialog& dialog)
{
  dialog.run();
  dialog.hide();
}

// Reads a file into `text`. Returns whether it could be read.
bool load_text(const std::string& path, Glib::ustring& text)
{
  try {
    text = read_file_contents(path);
    return true;
  } catch (const Glib::Error&) {
    return false;
  }
}

} // namespace

void SurveyWindow::create_actions()
{
  for (const auto& row : action_rows) {
    const auto stock = row.stock ? Gtk::StockID(*row.stock) : Gtk::StockID();
    if (row.handler)
      create_action(row.name, row.label, row.handler, row.tooltip, stock);
    else if (row.toggle_handler)
      create_action(row.name, row.label, row.toggle_handler, row.tooltip, stock);
    else
      create_menu_action(row.name, row.label);
  }
}

void SurveyWindow::create_menu_action(const std::string& name, const std::string& label)
{
  const auto action = Gtk::Action::create(name, label);
  actions[name] = action;
  action_group->add(action);
}

void SurveyWindow::create_action(const std::string& name, const std::string& label, Handler handler,
                                 const std::string& tooltip, const Gtk::StockID& stock)
{
  const auto action = new_action<Gtk::Action>(name, stock, label, tooltip);
  actions[name] = action;
  action_group->add(action, sigc::bind(sigc::mem_fun(*this, handler), name));
}

void SurveyWindow::create_action(const std::string& name, const std::string& label,
                                 ToggleHandler handler, const std::string& tooltip,
                                 const Gtk::StockID& stock)
{
  const auto action = new_action<Gtk::ToggleAction>(name, stock, label, tooltip);
  actions[name] = action;
  toggle_actions[name] = action;
  action_group->add(action, sigc::bind(sigc::mem_fun(*this, handler), name, action));
}

bool SurveyWindow::build_menus()
{
  ui_manager->insert_action_group(action_group, 0);
  add_accel_group(ui_manager->get_accel_group());
  try {
    ui_manager->add_ui_from_string(menu_description);
  } catch (const Glib::Error& error) {
    std::printf("SurveyWindow: building menus failed: %s\n", error.what().c_str());
    return false;
  }
  toolbar = pack_on_top("/ToolBar");
  menubar = pack_on_top("/MenuBar");
  if (toolbar)
    toolbar->hide();
  // These menus are for later use and are not visible yet.
  actions["EditMenu"]->set_visible(false);
  actions["ViewMenu"]->set_visible(false);
  return true;
}

Gtk::Widget* SurveyWindow::pack_on_top(const char* ui_path)
{
  auto* widget = ui_manager->get_widget(ui_path);
  if (widget) {
    survey_window_box->pack_start(*widget, Gtk::PACK_SHRINK);
    survey_window_box->reorder_child(*widget, 0);
  }
  return widget;
}

void SurveyWindow::menuitem_enable(const char* name, bool enabled)
{
  actions[name]->set_sensitive(enabled);
}

void SurveyWindow::menuitem_check(const char* name, bool checked)
{
  toggle_actions[name]->set_active(checked);
}

void SurveyWindow::on_action_FileOpen(const std::string&)
{
  select_and_open_saved_survey();
}

void SurveyWindow::on_action_FileNew(const std::string&)
{
  if (!check_file_save_okay("closing it to start a new survey"))
    return;
  NextWindow next(*my_app);
  carry_over_to(*next.window);
  next.window->remember_as_new_survey();
  next.window->go_to_first_question();
  next.take_the_place_of(*this);
}

void SurveyWindow::carry_over_to(SurveyWindow& next) const
{
  next.member_panel->member_id->set_text(member_panel->get_member_id());
  next.member_panel->last_name->set_text(member_panel->get_last_name());
  // Copies the location first, because it fills the list of survey types.
  next.survey_panel1->subregion->set_label(survey_panel1->subregion->get_label());
  next.survey_panel1->survey_subtype->set_id(survey_panel1->survey_subtype->get_id());

  const auto& shown = *listed_panel;
  auto& next_shown = *next.listed_panel;
  next_shown.name_display_common->set_active(shown.name_display_common->get_active());
  next_shown.name_display_scientific->set_active(shown.name_display_scientific->get_active());
  next_shown.name_display_both->set_active(shown.name_display_both->get_active());
  next_shown.spanish_enable->set_active(shown.spanish_enable->get_active());
}

void SurveyWindow::go_to_first_question()
{
  const bool has_id = !member_panel->get_member_id().empty();
  if (has_id && !member_panel->get_last_name().empty()) {
    survey_panel1->focus_on(survey_panel1->subregion);
    return;
  }
  notebook->set_current_page(member_panel->page);
  (has_id ? member_panel->last_name : member_panel->member_id)->grab_focus();
}

void SurveyWindow::on_action_FileSaveForLater(const std::string&)
{
  do_save(MyApp::WD_IN_PROGRESS, SAVE_ASK_NEXT);
}

void SurveyWindow::on_action_FileSaveForUpload(const std::string&)
{
  do_save(MyApp::WD_READY_TO_UPLOAD, SAVE_ASK_NEXT);
}

void SurveyWindow::on_action_FileClose(const std::string&)
{
  if (check_file_save_okay("closing this survey"))
    hide();
}

void SurveyWindow::on_action_FileQuit(const std::string&)
{
  if (check_file_save_okay("exiting this program"))
    hide(); // other windows stay open
}

void SurveyWindow::on_action_EditCut(const std::string& action)
{
  say_unimplemented(action);
}

void SurveyWindow::on_action_EditCopy(const std::string& action)
{
  say_unimplemented(action);
}

void SurveyWindow::on_action_EditPaste(const std::string& action)
{
  say_unimplemented(action);
}

void SurveyWindow::on_action_ViewToolbar(
    const std::string& action,
    // NOLINTNEXTLINE(performance-unnecessary-value-param): the signature of toggle handlers
    Glib::RefPtr<Gtk::ToggleAction> toggle)
{
  const bool shown = toggle->get_active();
  std::printf("%s() - now %s\n", action.c_str(), shown ? "TRUE" : "false");
  if (toolbar)
    show_or_hide(toolbar, shown);
}

void SurveyWindow::on_action_HelpInstructions(const std::string&)
{
  show_help_text("instructions", "resources/instructions.txt",
                 "Instructions for survey data entry");
}

void SurveyWindow::on_action_HelpReleaseNotes(const std::string&)
{
  show_help_text("release notes", "resources/release-notes.txt",
                 Glib::ustring("Release notes - Version ") + BuildInfo::version_str);
}

void SurveyWindow::show_help_text(const char* what, const char* path, const Glib::ustring& title)
{
  Glib::ustring text;
  if (!load_text(path, text)) {
    error("Failed to read %s file %s", what, path);
    return;
  }
  // The label shows this text if it cannot parse the next one.
  program_instructions->set_label(Glib::ustring("error parsing markup in ") + path);
  program_instructions->set_label(text);
  instructions_dialog->set_title(title);
  run_and_hide(*instructions_dialog);
}

void SurveyWindow::on_action_HelpContact(const std::string&)
{
  run_and_hide(*contact_dialog);
}

void SurveyWindow::on_action_HelpCheckForUpdates(const std::string&)
{
  manual_check_for_updates();
}

void SurveyWindow::on_action_HelpAbout(const std::string&)
{
  run_and_hide(*about_dialog);
}
