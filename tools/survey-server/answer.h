#pragma once

#include <string>
#include <utility>
#include <vector>

// What goes back for one request.
struct Answer {
  int status = 200;
  std::vector<std::pair<std::string, std::string>> headers; // name, value
  std::string body;

  void add_header(const std::string& name, const std::string& value);
  // Takes every header of that name away, in whatever case it is written.
  void remove_header(const std::string& name);

  // A header that only raw bytes can bring across: it holds a line break.
  bool has_broken_header() const;
  // Status line, headers and the empty line, for a body of `length` bytes after
  // which the connection is closed.
  std::string head(std::size_t length) const;
};

// Thrown where a request is refused: the status, and the reason for the user.
struct Refusal {
  int status;
  std::string reason;
};
