#pragma once

#include <list>
#include <string>

#include "behaviour.h"
#include "c-owner.h"
#include "options.h"
#include "raw-answer.h"
#include "request-record.h"

// The server: four roads on loopback. docs/server-protocol.md tells what they do.
class SurveyServer
{
public:
  // Throws std::invalid_argument if a behaviour cannot be understood.
  explicit SurveyServer(const Options& options);
  ~SurveyServer();
  SurveyServer(const SurveyServer&) = delete;
  SurveyServer& operator=(const SurveyServer&) = delete;

  // Starts to listen. Throws std::runtime_error if it cannot.
  void listen();

  unsigned port = 0; // set by listen()

private:
  struct Road {
    const char* name;
    Turns turns;
    Answer (SurveyServer::*answer)(SoupMessage*, const Behaviour&) const;
  };

  static void on_request(SoupServer* server, SoupMessage* message, const char* path,
                         GHashTable* query, SoupClientContext* client, gpointer self);
  void respond(SoupMessage* message, Road& road, SoupClientContext* client);
  Road& road_of(const std::string& path, GHashTable* query);

  // What each road answers if all is well. They throw a Refusal.
  Answer take_upload(SoupMessage* message, const Behaviour& behaviour) const;
  Answer tell_app_version(SoupMessage* message, const Behaviour& behaviour) const;
  Answer tell_data_version(SoupMessage* message, const Behaviour& behaviour) const;
  Answer send_archive(SoupMessage* message, const Behaviour& behaviour) const;
  Answer refuse_path(SoupMessage* message, const Behaviour& behaviour) const;

  std::string address() const;
  void send_raw(SoupClientContext* client, std::vector<std::string> pieces, unsigned delay_ms);

  const Options options;
  RequestRecord record;
  Road upload;
  Road app_query;
  Road data_query;
  Road archive;
  Road elsewhere;
  std::list<std::unique_ptr<RawAnswer>> raw_answers; // under way
  GObjectPtr<SoupServer> server;
};
