#pragma once

#include "support/data-set.h"

#include <string>
#include <vector>

// The project's own server as a child process on loopback, with directories of
// its own; ended and removed by the destructor. Its --help tells the options.
class TestServer
{
public:
  // Fails the test if the server does not start.
  explicit TestServer(const std::vector<std::string>& options = {});
  ~TestServer();
  TestServer(const TestServer&) = delete;
  TestServer& operator=(const TestServer&) = delete;

  std::string address() const; // "http://127.0.0.1:PORT"
  // The requests answered so far, such as "GET /path?query 200". A request whose
  // answer has come is among them.
  std::vector<std::string> log() const;
  // Ends it early: from now on the address refuses connections.
  void stop();

  DataSet scratch;      // what all is in
  std::string uploads;  // the surveys that it keeps; ends in '/', as the next two
  std::string data;     // the data set that it offers; starts as DataSet::minimal()
  std::string requests; // each request as it came: "1-upload.txt", "2-app-query.txt", ...
  int port = 0;

private:
  void start(const std::vector<std::string>& options);
  std::string read_line() const;

  int child = 0; // process id; 0 once it has been ended
  int output = -1;
  mutable std::string unfinished; // line of the log
  mutable std::vector<std::string> lines;
};
