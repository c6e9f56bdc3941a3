#include "cli/browser.h"

#include "core/c-resource.h"
#include "store/file-identity.h"

#include <giomm/appinfo.h>
#include <glibmm/checksum.h>
#include <glibmm/convert.h>
#include <glibmm/fileutils.h>
#include <glibmm/miscutils.h>
#include <sys/stat.h>

#include "cli/could-not-run.h"

namespace {

// Returns the directory of the pages, which only this user can access.
std::string page_directory()
{
  constexpr mode_t for_user_only = 0700;
  std::string directory = Glib::build_filename(g_get_user_runtime_dir(), "mavo-surveys");
  g_mkdir_with_parents(directory.c_str(), for_user_only);
  chmod(directory.c_str(), for_user_only);
  return directory;
}

// Returns the program for web addresses. The program for HTML files could be an editor.
Glib::RefPtr<Gio::AppInfo> browser()
{
  auto found = Gio::AppInfo::get_default_for_uri_scheme("https");
  return found ? found : Gio::AppInfo::get_default_for_type("text/html", true);
}

} // namespace

void open_in_browser(const std::string& page, const std::string& source)
{
  const auto program = browser();
  if (!program)
    throw CouldNotRun("there is no browser that can open the page");
  const std::string name =
      Glib::Checksum::compute_checksum(Glib::Checksum::CHECKSUM_SHA1, resolved_path(source)) +
      ".html";
  const std::string path = Glib::build_filename(page_directory(), name);
  try {
    Glib::file_set_contents(path, page);
    program->launch_uri(Glib::filename_to_uri(path));
  } catch (const Glib::Error& failure) {
    throw CouldNotRun("cannot open the page: " + failure.what().raw());
  }
}
