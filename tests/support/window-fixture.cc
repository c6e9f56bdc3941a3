#include "support/window-fixture.h"

#include "core/my-app.h"
#include "support/application.h"
#include "support/main-loop.h"
#include "ui/drop-down-box.h"
#include "ui/survey-panel1.h"
#include "ui/survey-window.h"

#include <gtkmm/application.h>
#include <gtkmm/buildable.h>

namespace {

// No server listens at this address. A test that needs an answer starts a server.
const char* const unused_address = "http://127.0.0.1:9"; // the discard port

// Returns a new application object. It is never freed, because hidden windows point to it.
MyApp* kept_program()
{
  static auto& kept = *new std::vector<MyApp*>();
  kept.push_back(new MyApp(test_application()));
  return kept.back();
}

} // namespace

WindowTest::~WindowTest()
{
  for (auto* visible : visible_windows())
    visible->hide();
  settle();
}

SurveyWindow* WindowTest::create_window()
{
  if (!my_app) {
    my_app = kept_program();
    my_app->survey_root = application_dir.root + "/store";
    my_app->upload_url = std::string(unused_address) + "/dataentry/upload-survey.php";
    my_app->version_query_url = std::string(unused_address) + "/offline-data-entry/?get-version=";
  }
  window = SurveyWindow::create(*my_app);
  return window;
}

SurveyWindow* WindowTest::open_window()
{
  create_window();
  my_app->app->add_window(*window);
  window->show();
  window->present(); // the window gets the focus, as when a person starts the program
  wait_until("the window is the active one", [this] { return window->is_active(); });
  settle();
  return window;
}

std::vector<SurveyWindow*> WindowTest::visible_windows()
{
  std::vector<SurveyWindow*> visible;
  for (auto* toplevel : Gtk::Window::list_toplevels()) {
    auto* candidate = dynamic_cast<SurveyWindow*>(toplevel);
    if (candidate && candidate->get_visible())
      visible.push_back(candidate);
  }
  return visible;
}

void WindowTest::choose_subregion(const Glib::ustring& name) const
{
  choose(*window->survey_panel1->subregion, name);
}

void WindowTest::choose_survey_type(const Glib::ustring& name) const
{
  choose(*window->survey_panel1->survey_subtype, name);
}

void WindowTest::go_to_page(int page) const
{
  window->notebook->set_current_page(page);
  settle();
}

void choose(DropDownBox& box, const Glib::ustring& label)
{
  box.set_label(label);
  EXPECT_EQ(label, box.get_label());
  settle();
}

void press(Gtk::Button& button)
{
  ASSERT_TRUE(button.is_sensitive()) << button.get_label();
  button.clicked();
  settle();
}

Gtk::Widget* find_widget(Gtk::Widget& window, const Glib::ustring& id)
{
  if (window.Gtk::Buildable::get_name() == id)
    return &window;
  auto* container = dynamic_cast<Gtk::Container*>(&window);
  if (!container)
    return nullptr;
  for (auto* child : container->get_children())
    if (auto* found = find_widget(*child, id))
      return found;
  return nullptr;
}
