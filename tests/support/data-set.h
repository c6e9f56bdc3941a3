#pragma once

#include <string>

// A data set of the test's own: a fresh directory, removed at the end.
class DataSet
{
public:
  DataSet();
  ~DataSet();
  DataSet(const DataSet&) = delete;
  DataSet& operator=(const DataSet&) = delete;

  // Writes one file of the set as it stands.
  void file(const std::string& name, const std::string& text) const;
  // Removes one file of the set.
  void remove(const std::string& name) const;
  // Writes the smallest set in which everything works: region PAC with the
  // subregions PNW and CAL, and region CAR with the subregion FLA. See
  // data-set.cc for its rows.
  void minimal() const;

  std::string dir; // ends in '/'
};

// A directory that the program can run in: resources/ as shipped and
// data-files/ of the test's own. The working directory until the end.
class ApplicationDir
{
public:
  ApplicationDir();
  ~ApplicationDir();
  ApplicationDir(const ApplicationDir&) = delete;
  ApplicationDir& operator=(const ApplicationDir&) = delete;

  std::string root;     // no trailing '/'
  std::string previous; // the working directory before

  // What the program finds as its data; starts as DataSet::minimal().
  void file(const std::string& name, const std::string& text) const;
  // Uses the data set that ships with the program instead.
  void use_shipped_data() const;
  // Takes a copy of the shipped resources/ without the files whose names begin so,
  // for tests that change or miss some.
  void use_own_resources(const std::string& without_prefix) const;
};

// The whole file; fails the test if it cannot be read.
std::string read_file(const std::string& path);
// Writes a file, with its directories.
void write_file(const std::string& path, const std::string& text);
bool file_exists(const std::string& path);
