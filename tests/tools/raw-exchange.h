#pragma once

#include <string>

class TestServer;

// A connection over which these bytes have been sent.
class RawClient
{
public:
  RawClient(int port, const std::string& request);
  ~RawClient();
  RawClient(const RawClient&) = delete;
  RawClient& operator=(const RawClient&) = delete;

  // All that comes until the other side closes the connection.
  std::string answer() const;

  int descriptor;
};

// Sends these bytes over a fresh connection, and gives all that comes until the
// other side closes it.
std::string send_request(int port, const std::string& request);

// What a request without a body has to look like; the connection is closed behind it.
std::string get_request(const std::string& target);

// An upload of one form file with these head lines, as a multipart form.
struct Upload {
  std::string bytes = survey();
  std::string disposition = R"(form-data; name="survey-file"; filename="a.MAVO-Survey")";
  std::string type = "application/xml"; // of the file; empty: not told

  // The smallest survey document; `text` makes it differ from others.
  static std::string survey(const std::string& text = "");
  std::string request() const;
};

// What the server answers to it.
std::string send_upload(const TestServer& server, const Upload& upload = {});

// Parts of an answer.
int status_of(const std::string& answer);
std::string header_of(const std::string& answer, const std::string& name); // "(none)" if absent
std::string body_of(const std::string& answer);
