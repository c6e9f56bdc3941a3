#pragma once

#include <string>
#include <vector>

// The options of the command line.
struct Options {
  int port = 0;         // 0: any free port
  std::string uploads;  // the directory of the stored surveys
  std::string data;     // the directory of the offered data set
  std::string requests; // the directory of the stored requests; empty: stores none
  std::string app_version;
  std::string app_url; // empty: a page of this server
  std::string platform = "mac";
  // The behaviours for successive requests of each route.
  std::vector<std::string> upload;
  std::vector<std::string> app_query;
  std::vector<std::string> data_query;
  std::vector<std::string> archive;
};

// Reads the command line. --help prints a text and ends the program. Throws Glib::Error or
// std::invalid_argument if the command line is invalid.
Options read_options(int argc, char** argv);
