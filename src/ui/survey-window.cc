#include "ui/survey-window.h"

#include "core/displayed-text.h"
#include "core/markup.h"
#include "core/message-dialog.h"
#include "core/version.h"
#include "ui/confirm-panel.h"
#include "ui/listed-panel.h"
#include "ui/member-panel.h"
#include "ui/plain-models.h"
#include "ui/start-panel.h"
#include "ui/style.h"
#include "ui/survey-panel1.h"
#include "ui/survey-panel2.h"
#include "ui/tooltips.h"
#include "ui/unlisted-panel.h"
#include "ui/window-title.h"

#include <gdkmm/pixbuf.h>
#include <glibmm/fileutils.h>
#include <glibmm/markup.h>

namespace {

constexpr std::size_t longest_site = 200; // characters in the title
const char* const definition_file = "resources/survey-ui.glade";

// Ends the process because the creation of a window failed.
[[noreturn]] void fail_to_load(const char* kind, const Glib::ustring& reason)
{
  fatal("%s loading %s: %s", kind, definition_file, escape_markup(reason).c_str());
}

// Shows the contents of a page when the user first turns to it. The toolkit neither styles nor
// measures hidden widgets, so the creation of a window takes a quarter less time. Allocates the
// page at once, because the notebook uses the allocation to find the widget that gets the focus.
void show_contents(Gtk::Widget* page, unsigned int)
{
  auto* const contents = static_cast<Gtk::Bin*>(page)->get_child();
  if (contents->get_visible())
    return;
  contents->show();
  if (page->get_parent()->get_mapped())
    page->size_allocate(page->get_allocation());
}

SurveyWindow* load_window(MyApp& app)
{
  load_style();
  const auto builder = Gtk::Builder::create();
  builder->add_from_file(definition_file);
  SurveyWindow* window = nullptr;
  builder->get_widget_derived("survey_window", window);
  if (!window)
    fatal("Failed to find %s in UI", "survey_window");
  window->ctor_continued(builder, &app);
  window->hide();
  return window;
}

} // namespace

SurveyWindow* SurveyWindow::create(MyApp& app)
{
  try {
    return load_window(app);
  } catch (const Glib::FileError& error) {
    fail_to_load("FileError", error.what());
  } catch (const Glib::MarkupError& error) {
    fail_to_load("MarkupError", error.what());
  } catch (const Gtk::BuilderError& error) {
    fail_to_load("BuilderError", error.what());
  } catch (const std::exception& error) {
    fail_to_load("Unexpected error", error.what());
  } catch (...) {
    fatal("Unknown error loading %s", definition_file);
  }
}

SurveyWindow::SurveyWindow(BaseObjectType* cobject, const Glib::RefPtr<Gtk::Builder>&)
    : Gtk::Window(cobject),
      species_columns(this),
      listed_model(plain_store(species_columns)),
      unlisted_model(plain_store(species_columns)),
      action_group(Gtk::ActionGroup::create("")),
      ui_manager(Gtk::UIManager::create())
{
}

SurveyWindow::~SurveyWindow() = default;

void SurveyWindow::ctor_continued(const Glib::RefPtr<Gtk::Builder>& builder, MyApp* app)
{
  my_app = app;
  reference_data = my_app->reference_data();
  base_title = get_title();
  find_dialogs(builder);
  create_actions();
  if (!build_menus())
    return;
  build_abundance_menus();
  find_navigation(builder);
  make_panels(builder);
  notebook->signal_switch_page().connect(sigc::mem_fun(*this, &SurveyWindow::on_switch_page));
  signal_key_press_event().connect(sigc::mem_fun(*this, &SurveyWindow::on_page_key), false);
  notebook->set_current_page(start_panel->page);
  start_panel->new_survey_button->grab_focus();
  member_panel->connect_focus_signals();
  label_windows();
  follow_theme(*this);
  resize(900, 600);
  remember_as_unchanged();
}

void SurveyWindow::find_dialogs(const Glib::RefPtr<Gtk::Builder>& builder)
{
  builder->get_widget("about_dialog", about_dialog);
  builder->get_widget("contact_dialog", contact_dialog);
  builder->get_widget("instructions_dialog", instructions_dialog);
  builder->get_widget("program_instructions", program_instructions);
  builder->get_widget("survey_window_box", survey_window_box);
  builder->get_widget("uploaded_bar", uploaded_bar);
}

void SurveyWindow::find_navigation(const Glib::RefPtr<Gtk::Builder>& builder)
{
  const auto find_button = [&](const char* id, Gtk::Button*& button,
                               void (SurveyWindow::*handler)(), bool sensitive) {
    builder->get_widget(id, button);
    button->signal_clicked().connect(sigc::mem_fun(*this, handler));
    button->set_sensitive(sensitive);
  };
  builder->get_widget("notebook", notebook);
  find_button("save_button", save_button, &SurveyWindow::on_save_button, false);
  find_button("ready_button", ready_button, &SurveyWindow::on_ready_button, false);
  find_button("upload_button", upload_button, &SurveyWindow::on_upload_button, false);
  find_button("back_button", back_button, &SurveyWindow::on_back_button, false);
  find_button("next_button", next_button, &SurveyWindow::on_next_button, true);
}

void SurveyWindow::make_panels(const Glib::RefPtr<Gtk::Builder>& builder)
{
  while (notebook->get_n_pages() > 0)
    notebook->remove_page(0);
  fields.find(builder);
  // Called before the notebook's own handler turns the page.
  notebook->signal_switch_page().connect(sigc::ptr_fun(show_contents), false);
  make_panel(builder, start_panel, "start_panel", "Start/Open Survey");
  make_panel(builder, member_panel, "member_panel", "Member Info");
  make_panel(builder, survey_panel1, "survey_panel1", "Survey Info Part 1");
  make_panel(builder, survey_panel2, "survey_panel2", "Survey Info Part 2");
  make_panel(builder, listed_panel, "listed_panel", "Listed Species");
  make_panel(builder, unlisted_panel, "unlisted_panel", "Unlisted Species");
  make_panel(builder, confirm_panel, "confirm_panel", "Confirmation");
}

void SurveyWindow::label_windows()
{
  const auto icons = usable_icons();
  for (Gtk::Window* labelled :
       {static_cast<Gtk::Window*>(this), static_cast<Gtk::Window*>(contact_dialog),
        static_cast<Gtk::Window*>(instructions_dialog), static_cast<Gtk::Window*>(about_dialog)})
    labelled->set_icon_list(icons);
  about_dialog->set_version(Glib::ustring("Version ") + BuildInfo::version_str + "\nBuilt " +
                            BuildInfo::date_str);
}

void SurveyWindow::remember_as_unchanged()
{
  Glib::ustring ignored;
  const bool is_writable = generate_xml_string(ignored, false) == RET_SUCCESS;
  unwritable_as_opened = is_writable ? "" : entered_text();
  survey.xml_pristine = survey.xml_current;
  survey.xml_last_saved = survey.xml_current;
}

void SurveyWindow::remember_as_new_survey()
{
  Glib::ustring ignored;
  generate_xml_string(ignored, true);
  survey.xml_pristine = survey.xml_current;
  generate_xml_string(ignored, false);
  survey.xml_last_saved = survey.xml_current;
}

void SurveyWindow::set_title_string()
{
  const auto& where_and_when = *survey_panel1;
  set_title(window_title(where_and_when.year->get_id(), where_and_when.month->get_id(),
                         where_and_when.mday->get_id(),
                         displayed_line(where_and_when.dive_start->get_label()),
                         displayed_line(where_and_when.site_text, longest_site), base_title));
}

void SurveyWindow::on_switch_page(Gtk::Widget*, unsigned int page_number)
{
  const int number = static_cast<int>(page_number);
  if (number == confirm_panel->page)
    confirm_panel->refresh();
  back_button->set_sensitive(number != 0);
  next_button->set_sensitive(number < notebook->get_n_pages() - 1);
  show_current_tooltips(*this);
}

// Called before the focused widget gets the key, because a tree would use it to scroll sideways.
bool SurveyWindow::on_page_key(GdkEventKey* event)
{
  if ((event->state & gtk_accelerator_get_default_mod_mask()) != GDK_CONTROL_MASK)
    return false;
  if (event->keyval == GDK_KEY_Page_Down || event->keyval == GDK_KEY_KP_Page_Down)
    notebook->next_page();
  else if (event->keyval == GDK_KEY_Page_Up || event->keyval == GDK_KEY_KP_Page_Up)
    notebook->prev_page();
  else
    return false;
  if (!get_focus()) // the focused widget was on the previous page
    notebook->get_nth_page(notebook->get_current_page())->child_focus(Gtk::DIR_TAB_FORWARD);
  return true;
}

void SurveyWindow::on_save_button()
{
  do_save(MyApp::WD_IN_PROGRESS, SAVE_ASK_NEXT);
}

void SurveyWindow::on_ready_button()
{
  do_save(MyApp::WD_READY_TO_UPLOAD, SAVE_ASK_NEXT);
}

void SurveyWindow::on_back_button()
{
  notebook->prev_page();
}

void SurveyWindow::on_next_button()
{
  if (notebook->get_current_page() == 0 && !start_panel->lookup_selected_survey(nullptr).empty())
    start_panel->on_edit_view_button();
  else
    notebook->next_page();
}

bool SurveyWindow::on_delete_event(GdkEventAny*)
{
  return !check_file_save_okay("closing this survey");
}
