#pragma once

#include "server/http.h"

#include <cstddef>
#include <string>

// The functions of the HTTP library that http.cc needs in addition to the session of http.h.
// http-soup2.cc implements them with libsoup 2.4 and http-soup3.cc with libsoup 3. The CMake
// option MAVO_SOUP selects one of them.

// The limit of an answer's body. If the body is larger, the connection is closed.
struct BodyLimit {
  std::size_t bytes;
  bool is_kept; // whether the answer includes the body
};

// Both functions send one request and block until they have received the answer. They throw
// nothing for a failure of the exchange; its status is one of HttpFailure. REQUIRES: `url` is a
// valid http or https address.

// Sends a GET request and follows redirects.
HttpAnswer::Received send_question(SoupSession& session, const std::string& url,
                                   const BodyLimit& limit);
// Sends a POST request with a form that has one file. Does not follow redirects. REQUIRES: the
// name of the file has no line break.
HttpAnswer::Received send_form(SoupSession& session, const std::string& url, const FormFile& file,
                               const BodyLimit& limit);
