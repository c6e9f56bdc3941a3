#include "core/c-resource.h"
#include "core/markup.h"
#include "core/message-dialog.h"
#include "core/my-app.h"
#include "data/former-data.h"
#include "server/http.h"
#include "ui/survey-window.h"

#include <array>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

namespace fs = std::filesystem;

namespace {

const char* const archive_type = "application/x-bzip2";
// Stands for the status of a command that could not even be started.
constexpr int not_started = -77;

struct CommandResult {
  int status; // as the system encodes it: see wait(2)
  std::string output;
};

// Removes all below a directory that is neither file nor directory. tar lets no
// archive lead its own entries out of there, since it makes links last; but a
// link that one archive has left would lead the entries of the next one out, and
// a pipe would be waited for. The result is empty if none of them is left.
std::error_code remove_links_and_pipes(const fs::path& directory)
{
  std::error_code failure;
  if (!fs::is_directory(directory, failure))
    return {}; // whoever writes there will say so
  std::vector<fs::path> found;
  for (fs::recursive_directory_iterator entry(directory, failure), end; !failure && entry != end;
       entry.increment(failure)) {
    const fs::file_status status = entry->symlink_status(failure);
    if (!fs::is_regular_file(status) && !fs::is_directory(status))
      found.push_back(entry->path());
  }
  for (const auto& path : found) {
    if (!failure)
      fs::remove(path, failure);
  }
  return failure;
}

std::string unpacking_command(const std::string& archive, const std::string& directory)
{
  return "bzip2 -dkc '" + archive + "' | tar -C '" + directory + "' -xvf - 2>&1";
}

CommandResult run(const std::string& command)
{
  Pipe pipe(popen(command.c_str(), "r"));
  if (!pipe)
    return {not_started, ""};
  std::string output;
  std::array<char, 1024> block;
  while (!std::feof(pipe.get()) && !std::ferror(pipe.get()))
    output.append(block.data(), std::fread(block.data(), 1, block.size(), pipe.get()));
  return {pclose(pipe.release()), output};
}

// What the user is asked to send in; the link makes it markup.
std::string detail(const std::string& command, const std::string& output, int status)
{
  return "\n\nPlease include the following in an email to <a href=\"mailto:" MAVO_SUPPORT_ADDRESS
         "\">" MAVO_SUPPORT_ADDRESS "</a>:\n\nCommand: " +
         command + "\n\n" + output + "\nCommand returned " + std::to_string(status);
}

RetCode report_failure(const std::string& command, const CommandResult& result)
{
  const std::string text = detail(command, result.output, result.status);
  std::printf("output:\n%s\n", text.c_str());
  Glib::ustring markup = escape_ampersands(text);
  if (!is_label_markup(markup)) // over a file's name, say; the link has to stay one
    markup = detail(escape_markup(command), escape_markup(result.output), result.status);
  error("Failed to install data update! (%d)%s", result.status, markup.c_str());
  return RET_FAILURE;
}

void show_installed()
{
  Message message;
  message.title = "Data File Update Successful";
  message.text = "Data files successfully downloaded and installed.";
  message.standard_buttons = Gtk::BUTTONS_OK;
  message.modal = false;
  run_message(message);
}

RetCode unpack(const std::string& archive, const std::string& directory)
{
  const std::string command = unpacking_command(archive, directory);
  if (debug_level > 0)
    std::printf("About to run: %s\n", command.c_str());
  const FormerData former(directory);
  const CommandResult result = run(command);
  if (result.status == 0)
    return RET_SUCCESS;
  FormerData::put_back(directory);
  return report_failure(command, result);
}

} // namespace

RetCode SurveyWindow::download_data_files(SoupSession* session, const char* url)
{
  const std::string directory = my_app->get_local_data_dir();
  const std::string archive = directory + "/current-offline-data.tar.bz2";

  const HttpAnswer answer = http_get(*session, url);
  const char* const type = answer.header("Content-Type");
  if (debug_level > 0)
    std::printf("data version query response code is %d, type %s\n", answer.status(),
                type ? type : "(none)");
  const bool is_archive = type && std::strcmp(type, archive_type) == 0;
  if (answer.status() != status_ok || !is_archive || !answer.is_whole())
    return error("Failed to download data update! (%d)", answer.status());

  const std::string_view body = answer.body();
  if (debug_level > 0)
    std::printf("received body of %d bytes at %p\n", static_cast<int>(body.size()),
                static_cast<const void*>(body.data()));
  if (const std::error_code failure = remove_links_and_pipes(directory))
    return error("FAILED to write to %s!\n%s", escape_markup(directory).c_str(),
                 escape_markup(failure.message()).c_str());
  const RetCode written = write_file(archive, body.data(), body.size());
  if (written != RET_SUCCESS)
    return written;
  const RetCode unpacked = unpack(archive, directory);
  if (unpacked != RET_SUCCESS)
    return unpacked;
  if (my_app->read_data_files() != RET_SUCCESS)
    fatal("Unable to read new data files; you may need to re-install the app.  Sorry!!  :-(");
  show_installed();
  return RET_DATA_INSTALLED;
}
