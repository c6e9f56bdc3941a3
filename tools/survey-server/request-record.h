#pragma once

#include <string>

#include "request.h"

// Stores each request unchanged in a file: "1-upload.txt", ... The numbers continue after those
// of earlier runs in the directory, and no file is overwritten.
class RequestRecord
{
public:
  // Stores nothing if `dir` is empty.
  explicit RequestRecord(std::string dir);

  // Stores a request. `route` is the second part of the file's name. Ignores failures.
  void store(const Request& request, const std::string& route);

private:
  std::string dir;
  int count = 0;
};
