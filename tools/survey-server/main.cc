// survey-server: receives surveys and answers questions about versions, for the development and
// the tests of the program. --help lists its options.
#include <glib-unix.h>
#include <glibmm/error.h>
#include <glibmm/init.h>
#include <glibmm/main.h>
#include <libxml/parser.h>

#include <csignal>
#include <iostream>
#include <stdexcept>

#include "options.h"
#include "survey-server.h"

namespace {

int serve(const Options& options)
{
  SurveyServer server(options);
  server.listen();
  const auto loop = Glib::MainLoop::create();
  const auto quit = [](gpointer running) -> gboolean {
    g_main_loop_quit(static_cast<GMainLoop*>(running));
    return G_SOURCE_CONTINUE;
  };
  g_unix_signal_add(SIGTERM, quit, loop->gobj());
  g_unix_signal_add(SIGINT, quit, loop->gobj());
  std::cout << "Listening on 127.0.0.1:" << server.port << std::endl;
  loop->run();
  return 0;
}

} // namespace

int main(int argc, char** argv)
{
  Glib::init();
  try {
    return serve(read_options(argc, argv));
  } catch (const Glib::Error& error) {
    std::cerr << "survey-server: " << error.what().raw() << '\n';
    return 2;
  } catch (const std::invalid_argument& error) {
    std::cerr << "survey-server: " << error.what() << '\n';
    return 2;
  } catch (const std::exception& error) {
    std::cerr << "survey-server: cannot listen: " << error.what() << '\n';
    return 1;
  }
}
