// bare-window DEFINITION_FILE: the least that a gtkmm program does to show the window
// of a definition file. What the start of the real program is measured beside.
#include <gtkmm/application.h>
#include <gtkmm/builder.h>
#include <gtkmm/window.h>

#include <memory>

int main(int, char** argv)
{
  const auto app = Gtk::Application::create("org.mavo.bare-window", Gio::APPLICATION_NON_UNIQUE);
  app->register_application();
  const auto builder = Gtk::Builder::create_from_file(argv[1]);
  Gtk::Window* found = nullptr;
  builder->get_widget("survey_window", found);
  const std::unique_ptr<Gtk::Window> window(found);
  return app->run(*window);
}
