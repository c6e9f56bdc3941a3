#pragma once

#include <string>

// A data set in a new directory, which is empty at first. The destructor removes it.
class DataSet
{
public:
  // Throws std::runtime_error if the directory cannot be created.
  DataSet();
  ~DataSet();
  DataSet(const DataSet&) = delete;
  DataSet& operator=(const DataSet&) = delete;

  // Writes one file of the set.
  void file(const std::string& name, const std::string& text) const;
  // Removes one file of the set, if it exists.
  void remove(const std::string& name) const;
  // Writes the smallest complete set: region PAC with the subregions PNW and CAL, and region CAR
  // with the subregion FLA. data-set.cc has its rows.
  void minimal() const;

  std::string dir; // ends in '/'
};

// An application directory with the shipped resources/ and the test's own data-files/. It is the
// working directory during its lifetime.
class ApplicationDir
{
public:
  ApplicationDir();
  ~ApplicationDir();
  ApplicationDir(const ApplicationDir&) = delete;
  ApplicationDir& operator=(const ApplicationDir&) = delete;

  std::string root;     // no trailing '/'
  std::string previous; // the previous working directory

  // Writes a file of the program's data set, which is DataSet::minimal() at first.
  void file(const std::string& name, const std::string& text) const;
  // Uses the shipped data set instead.
  void use_shipped_data() const;
  // Uses a copy of the shipped resources/ without the files whose names begin with
  // `without_prefix`, for tests that change or remove some.
  void use_own_resources(const std::string& without_prefix) const;
};

// Returns the contents of a file. Fails the test if the file cannot be read.
std::string read_file(const std::string& path);
// Writes a file and creates its directories. Throws std::filesystem::filesystem_error if they
// cannot be created. Does not report a failure to write the file.
void write_file(const std::string& path, const std::string& text);
// Returns whether something exists at the path. A link counts only if its target exists.
bool file_exists(const std::string& path);
