#pragma once

#include <string>
#include <utility>
#include <vector>

// The answer to one request.
struct Answer {
  int status = 200;                                         // of HTTP
  std::vector<std::pair<std::string, std::string>> headers; // name, value
  std::string body;

  // Appends a header. Does not replace another one with that name.
  void add_header(const std::string& name, const std::string& value);
  // Removes every header with that name. Ignores its case.
  void remove_header(const std::string& name);

  // Returns whether a header contains a line break, which only a raw answer can send.
  bool has_broken_header() const;
  // Returns the status line, the headers and the empty line for a body of `length` bytes. They
  // announce that the connection closes after the body.
  std::string head(std::size_t length) const;
};

// An exception that refuses a request, with the HTTP status and the reason for the user.
struct Refusal {
  int status;
  std::string reason;
};
