#pragma once

#include <string>
#include <utility>
#include <vector>

#include "answer.h"
#include "c-owner.h"

// What the HTTP library has for a request. http-soup2.cc defines it, and the members that
// need it, for libsoup 2.4, http-soup3.cc for libsoup 3.
struct LibraryRequest;

// The one file of a form.
struct FormFile {
  std::string disposition; // as it came, empty if absent; as the next one
  std::string content_type;
  std::string bytes;
};

// A request that has come, valid until the answer has been given.
class Request
{
public:
  explicit Request(LibraryRequest& library_request) : request(library_request) {}

  std::string method() const;
  std::string target() const; // path and query
  int minor_version() const;  // of HTTP: 0 or 1
  // All headers as they came: name, value.
  std::vector<std::pair<std::string, std::string>> headers() const;
  std::string body() const;
  // The file of the form that the body is. Throws a Refusal if it is none, or has not
  // exactly one file.
  FormFile form_file() const;

  // Hands the answer to the library, which sends it.
  void answer(const Answer& answer) const;
  // The connection, for an answer that the library cannot give.
  GObjectPtr<GIOStream> take_connection() const;

private:
  SoupMessageHeaders* library_headers() const;
  // Throws a Refusal unless the request says that it is a form.
  void check_content_type() const;

  LibraryRequest& request;
};

// For these two sources: the value of "get-version", empty if the query has none.
std::string asked_version(GHashTable* query);
// A header of a part of a form, empty if absent. The content type is without parameters.
std::string header_of(SoupMessageHeaders* headers, const char* name);
std::string content_type_of(SoupMessageHeaders* headers);
// Throws a Refusal unless the form has been understood and has exactly one part.
void check_has_one_part(SoupMultipart* multipart);
