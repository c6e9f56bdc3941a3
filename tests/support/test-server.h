#pragma once

#include "support/data-set.h"

#include <string>
#include <vector>

// The project's own server as a child process on loopback, with its own directories. The
// destructor ends it and removes them. `survey-server --help` lists the options.
class TestServer
{
public:
  // Fails the test if the server does not start.
  explicit TestServer(const std::vector<std::string>& options = {});
  ~TestServer();
  TestServer(const TestServer&) = delete;
  TestServer& operator=(const TestServer&) = delete;

  std::string address() const; // "http://127.0.0.1:PORT"
  // Returns the answered requests so far, such as "GET /path?query 200". They include every
  // request whose answer has arrived.
  std::vector<std::string> log() const;
  // Ends the server. From then on, the address refuses connections. Fails the test if the server
  // reports a failure at its end.
  void stop();

  DataSet scratch;      // has the three directories below
  std::string uploads;  // the surveys that it stores; ends in '/', like the next two
  std::string data;     // the data set that it offers; DataSet::minimal() at first
  std::string requests; // each request: "1-upload.txt", "2-app-query.txt", ...
  int port = 0;

private:
  void start(const std::vector<std::string>& options);
  std::string read_line() const;

  int child = 0; // process id; 0 after its end
  int output = -1;
  mutable std::string unfinished; // the last, incomplete line of the log
  mutable std::vector<std::string> lines;
};
