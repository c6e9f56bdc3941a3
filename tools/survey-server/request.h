#pragma once

#include <string>
#include <utility>
#include <vector>

#include "answer.h"
#include "c-owner.h"

// The library's objects of a request. This type, and the functions that need it, are defined in
// http-soup2.cc for libsoup 2.4 and in http-soup3.cc for libsoup 3.
struct LibraryRequest;

// The one file of a form.
struct FormFile {
  std::string disposition;  // the unchanged Content-Disposition; empty if absent
  std::string content_type; // without parameters; empty if absent
  std::string bytes;
};

// A received request. It is valid only during the call of the handler.
class Request
{
public:
  explicit Request(LibraryRequest& library_request) : request(library_request) {}

  std::string method() const;
  std::string target() const; // path and query
  int minor_version() const;  // of HTTP: 0 or 1
  // Returns all headers, unchanged and in order: name, value.
  std::vector<std::pair<std::string, std::string>> headers() const;
  std::string body() const;
  // Returns the file of the form in the body. Throws a Refusal if the body is not a form with
  // exactly one file.
  FormFile form_file() const;

  // Passes the answer to the library, which sends it after the handler has returned.
  void answer(const Answer& answer) const;
  // Takes the connection from the library, for an answer that the library cannot send. The caller
  // owns it. After that, this request has no other answer.
  GObjectPtr<GIOStream> take_connection() const;

private:
  SoupMessageHeaders* library_headers() const;
  // Throws a Refusal unless the content type of the request is that of a form with files.
  void check_content_type() const;

  LibraryRequest& request;
};

// The following functions are for http-soup2.cc and http-soup3.cc.

// Returns the value of "get-version"; empty if `query` has none or is null.
std::string asked_version(GHashTable* query);
// Return a header, or the content type without parameters. Return an empty text if it is absent.
std::string header_of(SoupMessageHeaders* headers, const char* name);
std::string content_type_of(SoupMessageHeaders* headers);
// Throws a Refusal if `multipart` is null, because the form is malformed, or if it does not have
// exactly one part.
void check_has_one_part(SoupMultipart* multipart);
