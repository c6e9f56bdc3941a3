#include "options.h"

#include "core/version.h"

#include <glibmm/optioncontext.h>
#include <glibmm/optionentry.h>
#include <glibmm/optiongroup.h>

#include <stdexcept>

namespace {

const char* const summary =
    "A server for developing, testing and trying MAVO-Survey. It listens on 127.0.0.1\n"
    "only, receives surveys, and answers queries for the versions of the program and of\n"
    "the reference data.";

const char* const description =
    "SPEC describes an answer. If an option is given several times, its first SPEC applies\n"
    "to the first request of that kind, and so on; the last one applies to all later\n"
    "requests. A SPEC is a list of words separated by commas. %XX in a value is the byte\n"
    "with that number.\n"
    "  ok                   sends the correct answer\n"
    "  status=N             sends this status; stores a survey only if it is 200 to 299\n"
    "  without=HEADER       omits this header\n"
    "  header=NAME:VALUE    adds this header\n"
    "  error=TEXT           adds the header X-Survey-Upload-Error\n"
    "  long-header=N        adds a header with a value of N bytes\n"
    "  type=CONTENT/TYPE    sends this content type\n"
    "  redirect=URL         sends 302 (or status=N) and this Location; stores no survey\n"
    "  delay=MS             waits this number of milliseconds before the answer\n"
    "  trickle              sends the answer in pieces, over about a second\n"
    "  close=before         closes the connection instead of an answer\n"
    "  close=middle         closes the connection in the middle of the answer's body\n"
    "  garbage              sends bytes that are not HTTP\n"
    "  damaged=KIND         sends a damaged archive: truncated, empty, not-bzip2, not-tar,\n"
    "                       or FILE:PATH for the contents of that file\n"
    "If a client repeats a request, for example after close=before on a connection that it\n"
    "used before, the repetition counts as another request.";

Glib::OptionEntry entry(const char* name, const char* argument, const char* text)
{
  Glib::OptionEntry option;
  option.set_long_name(name);
  option.set_arg_description(argument);
  option.set_description(text);
  return option;
}

void add_entries(Glib::OptionGroup& group, Options& options)
{
  group.add_entry(entry("port", "N", "Port to listen on; 0, the default, chooses a free one"),
                  options.port);
  const auto text = [&group](std::string& value, const char* name, const char* argument,
                             const char* help) {
    group.add_entry_filename(entry(name, argument, help), value);
  };
  text(options.uploads, "uploads", "DIR", "Where to store surveys");
  text(options.data, "data", "DIR", "The data set to offer");
  text(options.requests, "requests", "DIR", "Where to store each request");
  text(options.app_version, "app-version", "VERSION",
       "Version of the newest program (default: this build)");
  text(options.app_url, "app-url", "URL", "Address of the newest program");
  text(options.platform, "platform", "NAME", "Platform of the newest program (default: mac)");

  const auto route = [&group](std::vector<std::string>& value, const char* name, const char* help) {
    group.add_entry_filename(entry(name, "SPEC", help), value);
  };
  route(options.upload, "upload", "How to answer surveys");
  route(options.app_query, "app-query", "How to answer the query for the program's version");
  route(options.data_query, "data-query", "How to answer the query for the data's version");
  route(options.archive, "archive", "How to answer the request for the data");
}

void check(const Options& options, int left_over)
{
  if (left_over > 1)
    throw std::invalid_argument("arguments without an option are not understood");
  if (options.port < 0 || options.port > 65535)
    throw std::invalid_argument("--port takes a number up to 65535");
  if (options.uploads.empty() || options.data.empty())
    throw std::invalid_argument("--uploads and --data are needed; see --help");
}

} // namespace

Options read_options(int argc, char** argv)
{
  Options options;
  options.app_version = BuildInfo::version_str;
  Glib::OptionGroup group("server", "Server");
  add_entries(group, options);
  Glib::OptionContext context;
  context.set_summary(summary);
  context.set_description(description);
  context.set_main_group(group);
  context.parse(argc, argv);
  check(options, argc);
  return options;
}
