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

void require_method(SoupMessage* message, const char* method)
{
  if (std::string(message->method) != method)
    throw Refusal{405, std::string("Only ") + method + " is understood here."};
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

// Nothing else may be printed in between: who reads the lines counts on them.
void log_request(SoupMessage* message, const std::string& outcome)
{
  std::cout << message->method << ' ' << target_of(message) << ' ' << outcome << std::endl;
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
      server(soup_server_new("server-header", "survey-server", nullptr))
{
  soup_server_add_handler(server.get(), nullptr, &SurveyServer::on_request, this, nullptr);
}

SurveyServer::~SurveyServer()
{
  soup_server_disconnect(server.get());
}

void SurveyServer::listen()
{
  GError* failure = nullptr;
  const bool listens = soup_server_listen_local(server.get(), static_cast<guint>(options.port),
                                                SOUP_SERVER_LISTEN_IPV4_ONLY, &failure);
  const GErrorPtr error(failure);
  if (!listens)
    throw std::runtime_error(error->message);
  GSList* const addresses = soup_server_get_uris(server.get());
  port = soup_uri_get_port(static_cast<SoupURI*>(addresses->data));
  g_slist_free_full(addresses, [](gpointer uri) { soup_uri_free(static_cast<SoupURI*>(uri)); });
}

std::string SurveyServer::address() const
{
  return "http://127.0.0.1:" + std::to_string(port);
}

void SurveyServer::on_request(SoupServer*, SoupMessage* message, const char* path,
                              GHashTable* query, SoupClientContext* client, gpointer self)
{
  auto* const that = static_cast<SurveyServer*>(self);
  that->respond(message, that->road_of(path, query), client);
}

SurveyServer::Road& SurveyServer::road_of(const std::string& path, GHashTable* query)
{
  if (path == upload_path)
    return upload;
  if (path == archive_path)
    return archive;
  const auto* const asked =
      query ? static_cast<const char*>(g_hash_table_lookup(query, "get-version")) : nullptr;
  if (path != query_path || !asked)
    return elsewhere;
  if (asked == options.platform)
    return app_query;
  return std::string(asked) == "data-files" ? data_query : elsewhere;
}

void SurveyServer::respond(SoupMessage* message, Road& road, SoupClientContext* client)
{
  record.keep(message, road.name);
  const Behaviour& behaviour = road.turns.next();
  Answer answer;
  try {
    answer = (this->*road.answer)(message, behaviour);
  } catch (const Refusal& refusal) {
    answer = refused(refusal);
  }
  behaviour.spoil(answer);

  // Who has the answer can count on the line.
  log_request(message, outcome_of(behaviour, answer));
  if (behaviour.needs_raw_answer(answer))
    send_raw(client, behaviour.pieces(answer), behaviour.delay_ms);
  else
    answer.give_to(message);
}

Answer SurveyServer::take_upload(SoupMessage* message, const Behaviour& behaviour) const
{
  Answer answer;
  answer.add_header("Content-Type", "text/plain; charset=utf-8");
  if (!behaviour.takes_request()) {
    answer.body = "The survey was not kept.\n";
    return answer;
  }
  require_method(message, "POST");
  answer.body = "Kept as " + keep_survey(options.uploads, received_survey(message)) + ".\n";
  answer.status = 201;
  answer.add_header("X-Survey-Upload-Successful", "1");
  return answer;
}

Answer SurveyServer::tell_app_version(SoupMessage* message, const Behaviour&) const
{
  require_method(message, "GET");
  Answer answer;
  answer.add_header("X-Current-App-Version-Is", options.app_version);
  answer.add_header("X-Download-App-From",
                    options.app_url.empty() ? address() + query_path : options.app_url);
  answer.add_header("Content-Type", "text/plain; charset=utf-8");
  answer.body = options.app_version + "\n";
  return answer;
}

Answer SurveyServer::tell_data_version(SoupMessage* message, const Behaviour&) const
{
  require_method(message, "GET");
  const DataSetInfo info = read_data_set_info(options.data);
  Answer answer;
  answer.add_header("X-Current-Data-Version-Is", info.timestamp);
  answer.add_header("X-Data-Last-Updated-Is", info.updated);
  answer.add_header("X-Download-Data-Files-From", address() + archive_path);
  answer.add_header("Content-Type", "text/plain; charset=utf-8");
  answer.body = info.timestamp + "\n";
  return answer;
}

Answer SurveyServer::send_archive(SoupMessage* message, const Behaviour& behaviour) const
{
  require_method(message, "GET");
  Answer answer;
  answer.add_header("Content-Type", "application/x-bzip2");
  answer.body = behaviour.damage.empty() ? pack_data_set(options.data)
                                         : damaged_archive(options.data, behaviour.damage);
  return answer;
}

Answer SurveyServer::refuse_path(SoupMessage*, const Behaviour&) const
{
  throw Refusal{404, "There is nothing here."};
}

void SurveyServer::send_raw(SoupClientContext* client, std::vector<std::string> pieces,
                            unsigned delay_ms)
{
  GObjectPtr<GIOStream> connection(soup_client_context_steal_connection(client));
  const auto done = [this](RawAnswer* sent) {
    raw_answers.remove_if([sent](const auto& answer) { return answer.get() == sent; });
  };
  raw_answers.push_back(
      std::make_unique<RawAnswer>(std::move(connection), std::move(pieces), delay_ms, done));
}
