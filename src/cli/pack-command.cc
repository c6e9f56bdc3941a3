#include "cli/pack-command.h"

#include "data/data-file-info.h"
#include "store/replace-file.h"

#include <glibmm/miscutils.h>
#include <glibmm/uriutils.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <nlohmann/json.hpp>
#include <utility>

#include "cli/could-not-run.h"
#include "cli/data-pack.h"
#include "cli/data-set-check.h"
#include "cli/option-entry.h"
#include "cli/output.h"

namespace {

using Headers = std::vector<std::pair<std::string, std::string>>;

// Returns the headers with which the server answers a query for the newest data.
Headers headers_of_answer(const DataFileInfo& info, const std::string& url)
{
  return {{"X-Current-Data-Version-Is", info.timestamp},
          {"X-Data-Last-Updated-Is", info.updated},
          {"X-Download-Data-Files-From", url}};
}

Headers headers_of_archive(std::size_t size)
{
  return {{"Content-Type", "application/x-bzip2"}, {"Content-Length", std::to_string(size)}};
}

std::string plain_headers(const Headers& answer, const Headers& archive, const std::string& url)
{
  std::string text = "The server must answer GET /offline-data-entry/?get-version=data-files "
                     "with status 200 and these headers:\n";
  for (const auto& [name, value] : answer)
    text.append("  ").append(name).append(": ").append(value).append("\n");
  text += "It must answer GET " + url + " with the archive and these headers:\n";
  for (const auto& [name, value] : archive)
    text.append("  ").append(name).append(": ").append(value).append("\n");
  return text;
}

std::string json_headers(const Headers& answer, const Headers& archive)
{
  nlohmann::ordered_json object;
  for (const Headers& headers : {answer, archive})
    for (const auto& [name, value] : headers)
      object[name] = Glib::ustring(value).make_valid().raw();
  return object.dump() + "\n";
}

// Throws CouldNotRun if a value contains a control character. A line break would end the header.
void require_header_values(const Headers& headers)
{
  for (const auto& [name, value] : headers)
    if (std::any_of(value.begin(), value.end(), [](char c) { return g_ascii_iscntrl(c); }))
      throw CouldNotRun("the value of " + name + " contains a control character");
}

// Returns whether the set may be packed. Writes the findings that prevent it.
bool is_acceptable(const std::string& dir, FindingWriter& writer)
{
  const std::vector<Finding> findings = check_data_set(dir);
  for (const Finding& finding : findings)
    if (writer.is_fault(finding.severity))
      writer.write(finding);
  const auto warnings = std::count_if(findings.begin(), findings.end(), [](const Finding& found) {
    return found.severity == Severity::warning;
  });
  if (warnings > 0)
    std::fprintf(stderr, "Warnings about the data set: %d. 'mavo-data check' shows them.\n",
                 static_cast<int>(warnings));
  return writer.status() == ExitStatus::FINE;
}

} // namespace

void PackCommand::add_options(Glib::OptionGroup& options)
{
  finding_options.add_to(options);
  options.add_entry_filename(option_entry("output", "write the archive to FILE", "FILE", 'o'),
                             archive);
  options.add_entry(option_entry("url", "the address that FILE will have on the server", "URL"),
                    url);
}

ExitStatus PackCommand::run(const std::vector<std::string>& arguments, Output& out)
{
  if (archive.empty())
    throw CouldNotRun("the option --output=FILE is missing");
  FindingWriter writer = finding_options.make_writer(out);
  const std::string dir = (std::filesystem::path(arguments.front()) / "").string();
  if (!std::filesystem::is_directory(dir))
    throw CouldNotRun(arguments.front() + " is not a directory");
  if (!is_acceptable(dir, writer))
    return writer.status();

  const std::string bytes = pack_data_set(dir);
  const std::string address = url.empty()
                                  ? "http://" MAVO_WEB_HOST "/offline-data-entry/" +
                                        Glib::uri_escape_string(Glib::path_get_basename(archive))
                                  : url.raw();
  const Headers answer = headers_of_answer(DataFileInfo(dir), address);
  const Headers download = headers_of_archive(bytes.size());
  require_header_values(answer);
  replace_file(archive, bytes.data(), bytes.size(), "");
  out.write(writer.is_json() ? json_headers(answer, download)
                             : plain_headers(answer, download, address));
  return writer.status();
}
