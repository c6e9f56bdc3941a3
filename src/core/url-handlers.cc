#include "core/url-handlers.h"

#include "core/report.h"
#include "core/text.h"

#include <giomm/appinfo.h>
#include <glibmm/error.h>
#include <glibmm/keyfile.h>
#include <glibmm/miscutils.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <system_error>
#include <vector>

namespace fs = std::filesystem;

namespace {

const char* const command = "open";
const char* const handler_name = "open hack";

// GLib saves a handler that was created from a command line as
// "userapp-<name>-<random>.desktop".
bool is_open_handler_id(const std::string& id)
{
  return begins_with(id, std::string("userapp-") + handler_name + "-") &&
         fs::path(id).extension() == ".desktop";
}

bool is_open_handler_file(const std::string& path)
{
  try {
    Glib::KeyFile file;
    file.load_from_file(path);
    const std::string line = file.get_string("Desktop Entry", "Exec");
    return same_bytes(file.get_string("Desktop Entry", "Name"), handler_name) &&
           line.substr(0, line.find(' ')) == command;
  } catch (const Glib::Error&) {
    return false;
  }
}

bool is_open_handler(const Gio::AppInfo& handler)
{
  return handler.get_name() == handler_name && handler.get_executable() == command;
}

void remove_open_handler_files(const std::string& applications)
{
  std::error_code end;
  std::vector<fs::path> found;
  for (fs::directory_iterator entry(applications, end), none; !end && entry != none;
       entry.increment(end)) {
    const fs::path& path = entry->path();
    if (is_open_handler_id(path.filename()) && is_open_handler_file(path))
      found.push_back(path);
  }
  for (const auto& path : found) {
    if (fs::remove(path, end) && debug_level >= 0)
      printf("Removed the handler %s of an earlier start\n", path.c_str());
  }
}

// Removes entries from one list of mimeapps.list. Returns whether there were any.
bool remove_entries(Glib::KeyFile& associations, const Glib::ustring& group,
                    const Glib::ustring& type, const std::string& applications)
{
  const auto is_gone = [&applications](const std::string& id) {
    std::error_code unknown;
    return is_open_handler_id(id) && !fs::exists(applications + "/" + id, unknown);
  };
  std::vector<Glib::ustring> ids = associations.get_string_list(group, type);
  const auto kept = std::remove_if(ids.begin(), ids.end(), is_gone);
  if (kept == ids.end())
    return false;
  ids.erase(kept, ids.end());
  if (ids.empty())
    associations.remove_key(group, type);
  else
    associations.set_string_list(group, type, ids);
  return true;
}

// Removes from mimeapps.list the registrations of "open" whose desktop files no longer exist.
void remove_from_associations(const std::string& path, const std::string& applications)
{
  try {
    Glib::KeyFile associations;
    associations.load_from_file(path,
                                Glib::KEY_FILE_KEEP_COMMENTS | Glib::KEY_FILE_KEEP_TRANSLATIONS);
    bool changed = false;
    for (const auto& group : associations.get_groups())
      for (const auto& type : associations.get_keys(group))
        changed = remove_entries(associations, group, type, applications) || changed;
    if (changed)
      associations.save_to_file(path);
  } catch (const Glib::Error&) {
    // The file does not exist, or it is damaged: the program does not repair it.
  }
}

Glib::RefPtr<Gio::AppInfo> create_open_command()
{
  try {
    return Gio::AppInfo::create_from_commandline(command, handler_name,
                                                 Gio::APP_INFO_CREATE_SUPPORTS_URIS);
  } catch (const Glib::Error&) {
    return {};
  }
}

// Registers the handler. Returns false and removes it if that fails.
bool set_as_default(Gio::AppInfo& handler, const std::string& type)
{
  try {
    if (handler.set_as_default_for_type(type))
      return true;
  } catch (const Glib::Error&) {
  }
  handler.do_delete();
  return false;
}

void register_open_command(const std::string& scheme)
{
  const auto handler = create_open_command();
  if (!handler)
    printf("Failed to create AppInfo to handle %s\n", scheme.c_str());
  else if (!has_open_command() ||
           !set_as_default(*handler.operator->(), "x-scheme-handler/" + scheme))
    printf("Failed to set up handler for %s\n", scheme.c_str());
}

void check_url_handler(const std::string& scheme)
{
  if (!has_url_handler(scheme)) {
    if (debug_level >= 0)
      printf("No default app for %s!\n", scheme.c_str());
    register_open_command(scheme);
    return;
  }
  if (debug_level >= 2) {
    const auto handler = Gio::AppInfo::get_default_for_uri_scheme(scheme);
    printf("default app for %s is %s (%s): %s\n", scheme.c_str(),
           handler->get_display_name().c_str(), handler->get_description().c_str(),
           handler->get_executable().c_str());
  }
}

} // namespace

bool has_open_command()
{
  const std::string found = Glib::find_program_in_path(command);
  if (found.empty())
    return false;
  std::error_code failure;
  const fs::path resolved = fs::canonical(found, failure);
  return !failure && resolved.filename() != "xdg-open";
}

bool has_endless_handler(const std::string& scheme)
{
  const auto handler = Gio::AppInfo::get_default_for_uri_scheme(scheme);
  return handler && is_open_handler(*handler.operator->()) && !has_open_command();
}

bool has_url_handler(const std::string& scheme)
{
  return Gio::AppInfo::get_default_for_uri_scheme(scheme) && !has_endless_handler(scheme);
}

void remove_open_handlers(const std::string& data_dir, const std::string& config_dir)
{
  const std::string applications = data_dir + "/applications";
  remove_open_handler_files(applications);
  remove_from_associations(config_dir + "/mimeapps.list", applications);
}

void check_url_handlers()
{
  if (!has_open_command())
    remove_open_handlers(Glib::get_user_data_dir(), Glib::get_user_config_dir());
  for (const char* const scheme : {"http", "https", "mailto"})
    check_url_handler(scheme);
}
