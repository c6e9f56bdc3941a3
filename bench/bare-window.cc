// bare-window DEFINITION_FILE [PANEL...]: a minimal gtkmm program that shows the window of a
// definition file, with the given panels of the file as pages of its notebook. It is the
// reference for the start of the real program.
#include <gtkmm/application.h>
#include <gtkmm/builder.h>
#include <gtkmm/notebook.h>
#include <gtkmm/scrolledwindow.h>
#include <gtkmm/window.h>

#include <memory>
#include <string>
#include <vector>

namespace {

void add_pages(Gtk::Builder& builder, const std::vector<std::string>& panels)
{
  Gtk::Notebook* notebook = nullptr;
  builder.get_widget("notebook", notebook);
  while (notebook->get_n_pages() > 0)
    notebook->remove_page(0);
  for (const auto& id : panels) {
    Gtk::Widget* panel = nullptr;
    builder.get_widget(id, panel);
    auto* const scrolled = Gtk::make_managed<Gtk::ScrolledWindow>();
    scrolled->add(*panel);
    scrolled->show();
    notebook->append_page(*scrolled, id);
  }
}

} // namespace

int main(int argc, char** argv)
{
  const auto app = Gtk::Application::create("org.mavo.bare-window", Gio::APPLICATION_NON_UNIQUE);
  app->register_application();
  const auto builder = Gtk::Builder::create_from_file(argv[1]);
  Gtk::Window* found = nullptr;
  builder->get_widget("survey_window", found);
  const std::unique_ptr<Gtk::Window> window(found);
  if (argc > 2)
    add_pages(*builder.operator->(), {argv + 2, argv + argc});
  return app->run(*window);
}
