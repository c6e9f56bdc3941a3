#include "options.h"

#include "core/version.h"

#include <glibmm/optioncontext.h>
#include <glibmm/optionentry.h>
#include <glibmm/optiongroup.h>

#include <stdexcept>

namespace {

const char* const summary =
    "A server for developing, testing and trying MAVO-Survey. It listens on 127.0.0.1\n"
    "only, takes surveys, and tells about the program and the reference data.";

const char* const description =
    "SPEC tells how to answer. Given several times, the first stands for the first request\n"
    "of its road, and so on; the last one stays. It is a list of words with commas between\n"
    "them; %XX in a value is the byte with that number.\n"
    "  ok                   as it should be\n"
    "  status=N             this status; a survey is kept only if it is 200 to 299\n"
    "  without=HEADER       this header is left out\n"
    "  header=NAME:VALUE    this header is added\n"
    "  error=TEXT           the same for X-Survey-Upload-Error\n"
    "  long-header=N        a header with a value of N bytes is added\n"
    "  type=CONTENT/TYPE    this content type\n"
    "  redirect=URL         302 (or status=N) and this Location; no survey is kept\n"
    "  delay=MS             so many milliseconds pass before the answer\n"
    "  trickle              the answer comes in pieces, over about a second\n"
    "  close=before         the connection is closed instead of an answer\n"
    "  close=middle         the connection is closed in the middle of the answer's body\n"
    "  garbage              bytes come that are not HTTP\n"
    "  damaged=KIND         of the archive: truncated, empty, not-bzip2, not-tar, or\n"
    "                       FILE:PATH, which serves that file\n"
    "A request that a client repeats, as after close=before on a connection that it had\n"
    "used before, counts as a request of its own.";

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
  group.add_entry(entry("port", "N", "Port to listen on; 0, the default, takes any free one"),
                  options.port);
  const auto text = [&group](std::string& value, const char* name, const char* argument,
                             const char* help) {
    group.add_entry_filename(entry(name, argument, help), value);
  };
  text(options.uploads, "uploads", "DIR", "Where surveys are kept");
  text(options.data, "data", "DIR", "The data set that is offered");
  text(options.requests, "requests", "DIR", "Where each request is written down");
  text(options.app_version, "app-version", "VERSION", "Newest program (default: of this build)");
  text(options.app_url, "app-url", "URL", "Where the newest program is");
  text(options.platform, "platform", "NAME", "Platform that is asked for (default: mac)");

  const auto road = [&group](std::vector<std::string>& value, const char* name, const char* help) {
    group.add_entry_filename(entry(name, "SPEC", help), value);
  };
  road(options.upload, "upload", "How to answer surveys");
  road(options.app_query, "app-query", "How to answer the question for the program's version");
  road(options.data_query, "data-query", "How to answer the question for the data's version");
  road(options.archive, "archive", "How to answer the request of the data");
}

void check(const Options& options, int left_over)
{
  if (left_over > 1)
    throw std::invalid_argument("arguments without an option are not understood");
  if (options.port < 0 || options.port > 65535)
    throw std::invalid_argument("--port takes a number up to 65535");
  if (options.uploads.empty() || options.data.empty())
    throw std::invalid_argument("--uploads and --data are needed; --help tells more");
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
