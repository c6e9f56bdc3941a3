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
  // Throws std::invalid_argument if a behaviour cannot be understood.
  explicit SurveyServer(const Options& options);
  ~SurveyServer();
  SurveyServer(const SurveyServer&) = delete;
  SurveyServer& operator=(const SurveyServer&) = delete;

  // Starts to listen. Throws std::runtime_error if that fails.
  void listen();

  unsigned port = 0; // set by listen()

private:
  struct Road {
    const char* name;
    Turns turns;
    Answer (SurveyServer::*answer)(const Request&, const Behaviour&) const;
  };

  void respond(const Request& request, Road& road);
  Road& road_of(const std::string& path, const std::string& asked);

  // The correct answers of the routes. They throw a Refusal.
  Answer take_upload(const Request& request, const Behaviour& behaviour) const;
  Answer tell_app_version(const Request& request, const Behaviour& behaviour) const;
  Answer tell_data_version(const Request& request, const Behaviour& behaviour) const;
  Answer send_archive(const Request& request, const Behaviour& behaviour) const;
  Answer refuse_path(const Request& request, const Behaviour& behaviour) const;

  std::string address() const;
  void send_raw(const Request& request, std::vector<std::string> pieces, unsigned delay_ms);

  const Options options;
  RequestRecord record;
  Road upload;
  Road app_query;
  Road data_query;
  Road archive;
  Road elsewhere;
  std::list<std::unique_ptr<RawAnswer>> raw_answers; // those that are being sent
  Listener listener;
};
