#pragma once

#include <list>
#include <string>

#include "behaviour.h"
#include "listener.h"
#include "options.h"
#include "raw-answer.h"
#include "request-record.h"
#include "request.h"

// The server: four routes on loopback, which docs/server-protocol.md describes.
class SurveyServer
{
public:
  // Throws std::invalid_argument if a SPEC is invalid.
  explicit SurveyServer(const Options& options);
  ~SurveyServer();
  SurveyServer(const SurveyServer&) = delete;
  SurveyServer& operator=(const SurveyServer&) = delete;

  // Starts to listen. Throws std::runtime_error if that fails. The main loop then serves requests.
  void listen();

  unsigned port = 0; // set by listen()

private:
  struct Route {
    const char* name;
    Turns turns;
    Answer (SurveyServer::*answer)(const Request&, const Behaviour&) const;
  };

  void respond(const Request& request, Route& route);
  Route& route_of(const std::string& path, const std::string& asked);

  // Return the correct answers of the routes. Throw a Refusal if the request is refused.
  Answer take_upload(const Request& request, const Behaviour& behaviour) const;
  Answer tell_app_version(const Request& request, const Behaviour& behaviour) const;
  Answer tell_data_version(const Request& request, const Behaviour& behaviour) const;
  Answer send_archive(const Request& request, const Behaviour& behaviour) const;
  Answer refuse_path(const Request& request, const Behaviour& behaviour) const;

  std::string address() const;
  void send_raw(const Request& request, std::vector<std::string> pieces, unsigned delay_ms);

  const Options options;
  RequestRecord record;
  Route upload;
  Route app_query;
  Route data_query;
  Route archive;
  Route elsewhere;
  std::list<std::unique_ptr<RawAnswer>> raw_answers; // those that are being sent
  Listener listener;
};
