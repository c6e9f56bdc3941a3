#pragma once

#include <libsoup/soup.h>

#include <string>

// Writes down each request as it came, one file each: "1-upload.txt", ... The
// numbers go on after those that the directory has from former runs, and no
// file is overwritten.
class RequestRecord
{
public:
  // An empty `dir` keeps nothing.
  explicit RequestRecord(std::string dir);

  // `road` is the second part of the file's name.
  void keep(SoupMessage* message, const std::string& road);

private:
  std::string dir;
  int count = 0;
};

// Path and query of the request.
std::string target_of(SoupMessage* message);
