#pragma once

#include <string>

class TestServer;

// A connection to a port of this machine. The constructor sends `request`, and fails the test if
// that is impossible. The destructor closes the connection.
class RawClient
{
public:
  RawClient(int port, const std::string& request);
  ~RawClient();
  RawClient(const RawClient&) = delete;
  RawClient& operator=(const RawClient&) = delete;

  // Returns all bytes until the other side closes the connection.
  std::string answer() const;

  int descriptor;
};

// Sends these bytes over a new connection and returns all bytes until the other side closes it.
std::string send_request(int port, const std::string& request);

// Returns a request without a body that closes the connection.
std::string get_request(const std::string& target);

// An upload of one form file with these header lines, as a multipart form.
struct Upload {
  std::string bytes = survey();
  std::string disposition = R"(form-data; name="survey-file"; filename="a.MAVO-Survey")";
  std::string type = "application/xml"; // of the file; empty: no type

  // Returns the smallest survey document. `text` makes it different from others.
  static std::string survey(const std::string& text = "");
  // Returns the complete HTTP request.
  std::string request() const;
};

// Sends an upload and returns the server's answer.
std::string send_upload(const TestServer& server, const Upload& upload = {});

// Return parts of an answer.
int status_of(const std::string& answer); // 0 if the answer is not HTTP
std::string header_of(const std::string& answer, const std::string& name); // "(none)" if absent
std::string body_of(const std::string& answer);
