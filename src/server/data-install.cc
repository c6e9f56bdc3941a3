#include "core/long-text.h"
#include "core/markup.h"
#include "core/message-dialog.h"
#include "core/my-app.h"
#include "data/data-backup.h"
#include "data/data-file.h"
#include "server/data-archive.h"
#include "server/http.h"
#include "ui/survey-window.h"

#include <cstdio>
#include <cstring>
#include <optional>
#include <string>
#include <string_view>

namespace {

const char* const archive_type = "application/x-bzip2";

// Returns the details that the user is asked to send, as markup because of the link.
std::string detail(const std::string& command, const std::string& output, int status)
{
  return "\n\nPlease include the following in an email to <a href=\"mailto:" MAVO_SUPPORT_ADDRESS
         "\">" MAVO_SUPPORT_ADDRESS "</a>:\n\nCommand: " +
         command + "\n\n" + output + "\nCommand returned " + std::to_string(status);
}

std::string detail_markup(const std::string& command, const std::string& output, int status)
{
  const Glib::ustring markup = escape_ampersands(detail(command, output, status));
  if (is_label_markup(markup))
    return markup;
  // The text is not valid markup, for example because of a file's name. Escapes the parts
  // around the link, so that the link works.
  return detail(escape_markup(command), escape_markup(output), status);
}

RetCode report_failure(const Unpacked& unpacked)
{
  const auto& [command, status, output, failure] = unpacked;
  std::printf("output:\n%s\n", detail(command, output, status).c_str());
  const std::string start = "Failed to install data update! (" + std::to_string(status) + ")";
  return long_error(start + detail_markup(command, output, status),
                    start + detail_markup(command, shorten_text(output, longest_part), status));
}

RetCode report_unwritable(const std::string& directory, const std::error_code& failure)
{
  return error("FAILED to write to %s!\n%s", escape_markup(directory).c_str(),
               escape_markup(failure.message()).c_str());
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

} // namespace

RetCode SurveyWindow::download_data_files(SoupSession* session, const char* url)
{
  const std::string directory = my_app->get_local_data_dir();
  const std::string archive = directory + "/" + DataBackup::archive_name;

  const HttpAnswer answer = http_fetch(*session, url, largest_data_archive);
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
  std::optional<DataBackup> backup(directory);
  if (const std::error_code failure = backup->failure())
    return report_unwritable(backup->place().string(), failure);
  const RetCode written = write_file(archive, body.data(), body.size());
  if (written != RET_SUCCESS)
    return written;
  const Unpacked unpacked = unpack_archive(archive, directory, *backup);
  backup.reset(); // restores the old data unless the install succeeded
  if (unpacked.failure)
    return report_unwritable(directory, unpacked.failure);
  if (unpacked.status != 0)
    return report_failure(unpacked);
  if (my_app->read_data_files() != RET_SUCCESS)
    fatal("Unable to read new data files; you may need to re-install the app.  Sorry!!  :-(");
  show_installed();
  return RET_DATA_INSTALLED;
}
