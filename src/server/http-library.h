#pragma once

#include "server/http.h"

#include <cstddef>
#include <string>

// What http.cc needs of the HTTP library, beside the session of http.h. http-soup2.cc defines
// it with libsoup 2.4 and http-soup3.cc with libsoup 3; the CMake option MAVO_SOUP chooses.

// What is received of an answer's body. The connection is closed once it exceeds `bytes`.
struct BodyLimit {
  std::size_t bytes;
  bool is_kept;
};

// Both send one request and block until its answer has come. `url` is a valid http or https
// address.

// A GET that follows redirects.
HttpAnswer::Received send_question(SoupSession& session, const std::string& url,
                                   const BodyLimit& limit);
// A POST of a form with one file, which does not follow them. The file's name has no line
// break.
HttpAnswer::Received send_form(SoupSession& session, const std::string& url, const FormFile& file,
                               const BodyLimit& limit);
