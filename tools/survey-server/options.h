#pragma once

#include <string>
#include <vector>

// What the command line asks for.
struct Options {
  int port = 0; // 0: any free one
  std::string uploads;
  std::string data;
  std::string requests; // empty: requests are not kept
  std::string app_version;
  std::string app_url; // empty: a page of this server
  std::string platform = "mac";
  // What to do at successive requests of each road.
  std::vector<std::string> upload;
  std::vector<std::string> app_query;
  std::vector<std::string> data_query;
  std::vector<std::string> archive;
};

// Reads the command line; --help prints a text and ends the program. Throws
// Glib::Error or std::invalid_argument if it cannot be followed.
Options read_options(int argc, char** argv);
