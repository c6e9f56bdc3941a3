#pragma once

#include <string>

#include "request.h"

// Writes down each request as it came, one file each: "1-upload.txt", ... The
// numbers go on after those that the directory has from former runs, and no
// file is overwritten.
class RequestRecord
{
public:
  // An empty `dir` keeps nothing.
  explicit RequestRecord(std::string dir);

  // `road` is the second part of the file's name.
  void keep(const Request& request, const std::string& road);

private:
  std::string dir;
  int count = 0;
};
