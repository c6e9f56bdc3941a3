#include "survey-server.h"

#include <iostream>
#include <stdexcept>
#include <utility>

#include "data-archive.h"
#include "data-set-info.h"
#include "received-survey.h"
#include "survey-shelf.h"

namespace {

const char* const upload_path = "/dataentry/upload-survey.php";
const char* const query_path = "/offline-data-entry/";
const char* const archive_path = "/offline-data-entry/current-offline-data.tar.bz2";

void require_method(const Request& request, const char* method)
{
  if (request.method() != method)
    throw Refusal{405, std::string("Only ") + method + " is allowed here."};
}

Answer refused(const Refusal& refusal)
{
  Answer answer;
  answer.status = refusal.status;
  answer.add_header("X-Survey-Upload-Error", refusal.reason);
  answer.add_header("Content-Type", "text/plain; charset=utf-8");
  answer.body = refusal.reason + "\n";
  return answer;
}

// Prints one line for the request. Programs read these lines, so nothing else is printed.
void log_request(const Request& request, const std::string& outcome)
{
  std::cout << request.method() << ' ' << request.target() << ' ' << outcome << std::endl;
}

std::string outcome_of(const Behaviour& behaviour, const Answer& answer)
{
  if (behaviour.close == Behaviour::CLOSE_BEFORE)
    return "closed";
  return behaviour.garbage ? "garbage" : std::to_string(answer.status);
}

} // namespace

SurveyServer::SurveyServer(const Options& options_)
    : options(options_),
      record(options_.requests),
      upload{"upload", Turns(options.upload, false), &SurveyServer::take_upload},
      app_query{"app-query", Turns(options.app_query, false), &SurveyServer::tell_app_version},
      data_query{"data-query", Turns(options.data_query, false), &SurveyServer::tell_data_version},
      archive{"archive", Turns(options.archive, true), &SurveyServer::send_archive},
      elsewhere{"elsewhere", Turns({}, false), &SurveyServer::refuse_path},
      listener([this](const auto& request, const auto& path, const auto& asked) {
        respond(request, route_of(path, asked));
      })
{
}

SurveyServer::~SurveyServer() = default;

void SurveyServer::listen()
{
  port = listener.listen(static_cast<unsigned>(options.port));
}

std::string SurveyServer::address() const
{
  return "http://127.0.0.1:" + std::to_string(port);
}

SurveyServer::Route& SurveyServer::route_of(const std::string& path, const std::string& asked)
{
  if (path == upload_path)
    return upload;
  if (path == archive_path)
    return archive;
  if (path != query_path || asked.empty())
    return elsewhere;
  if (asked == options.platform)
    return app_query;
  return asked == "data-files" ? data_query : elsewhere;
}

void SurveyServer::respond(const Request& request, Route& route)
{
  record.store(request, route.name);
  const Behaviour& behaviour = route.turns.next();
  Answer answer;
  try {
    answer = (this->*route.answer)(request, behaviour);
  } catch (const Refusal& refusal) {
    answer = refused(refusal);
  }
  behaviour.spoil(answer);

  // Prints the line before it sends the answer: a client with the answer can rely on the line.
  log_request(request, outcome_of(behaviour, answer));
  if (behaviour.needs_raw_answer(answer))
    send_raw(request, behaviour.pieces(answer), behaviour.delay_ms);
  else
    request.answer(answer);
}

Answer SurveyServer::take_upload(const Request& request, const Behaviour& behaviour) const
{
  Answer answer;
  answer.add_header("Content-Type", "text/plain; charset=utf-8");
  if (!behaviour.accepts_request()) {
    answer.body = "The survey was not kept.\n";
    return answer;
  }
  require_method(request, "POST");
  answer.body = "Kept as " + keep_survey(options.uploads, received_survey(request)) + ".\n";
  answer.status = 201;
  answer.add_header("X-Survey-Upload-Successful", "1");
  return answer;
}

Answer SurveyServer::tell_app_version(const Request& request, const Behaviour&) const
{
  require_method(request, "GET");
  Answer answer;
  answer.add_header("X-Current-App-Version-Is", options.app_version);
  answer.add_header("X-Download-App-From",
                    options.app_url.empty() ? address() + query_path : options.app_url);
  answer.add_header("Content-Type", "text/plain; charset=utf-8");
  answer.body = options.app_version + "\n";
  return answer;
}

Answer SurveyServer::tell_data_version(const Request& request, const Behaviour&) const
{
  require_method(request, "GET");
  const DataSetInfo info = read_data_set_info(options.data);
  Answer answer;
  answer.add_header("X-Current-Data-Version-Is", info.timestamp);
  answer.add_header("X-Data-Last-Updated-Is", info.updated);
  answer.add_header("X-Download-Data-Files-From", address() + archive_path);
  answer.add_header("Content-Type", "text/plain; charset=utf-8");
  answer.body = info.timestamp + "\n";
  return answer;
}

Answer SurveyServer::send_archive(const Request& request, const Behaviour& behaviour) const
{
  require_method(request, "GET");
  Answer answer;
  answer.add_header("Content-Type", "application/x-bzip2");
  answer.body = behaviour.damage.empty() ? pack_data_set(options.data)
                                         : damaged_archive(options.data, behaviour.damage);
  return answer;
}

Answer SurveyServer::refuse_path(const Request&, const Behaviour&) const
{
  throw Refusal{404, "There is nothing here."};
}

void SurveyServer::send_raw(const Request& request, std::vector<std::string> pieces,
                            unsigned delay_ms)
{
  GObjectPtr<GIOStream> connection = request.take_connection();
  const auto done = [this](RawAnswer* sent) {
    raw_answers.remove_if([sent](const auto& answer) { return answer.get() == sent; });
  };
  raw_answers.push_back(
      std::make_unique<RawAnswer>(std::move(connection), std::move(pieces), delay_ms, done));
}
