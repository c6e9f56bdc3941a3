#pragma once

#include <map>
#include <string>

using Files = std::map<std::string, std::string>; // contents by path below a directory

// Returns all files below a directory. Fails the test if there is anything except files and
// directories.
Files files_below(const std::string& directory);

// A directory of local data with two different sets of reference data: the old set, which is in
// use, and the new set in an archive. All files of the sets differ, except one that the archive
// lacks and that stays unchanged.
class LocalData
{
public:
  enum Archive { COMPLETE, TRUNCATED }; // TRUNCATED: truncated in the middle of a file
  enum Set { OLD, NEW, NONE, TORN };    // TORN: only parts, or a mixture of both

  // Creates the sets and archives in `scratch`. Does not change `directory`.
  LocalData(std::string directory, const std::string& scratch);

  // Writes the old data and an older archive to the directory.
  void start_with_old_data() const;
  // Removes the directory.
  void start_with_nothing() const;
  // Leaves the directory in the state of a program that was killed while it was unpacking over
  // old data.
  void start_with_torn_data() const;

  // Installs an archive as the program does, but without messages.
  void install(Archive which) const;

  // Returns which set the directory has. Compares every byte.
  Set now() const;
  // Returns the names of all files in the directory except the set and the archive, each followed
  // by a blank. Temporary files have the same name. A backup is included as "backup".
  std::string leftovers() const;

  // Returns the path of the directory that the program uses for its backup.
  std::string backup() const;
  // Returns the path of an archive.
  std::string archive(Archive which) const { return which == COMPLETE ? complete : truncated; }

  const std::string directory;
  static const char* const old_timestamp;
  static const char* const new_timestamp;

private:
  Files old_set, new_set;
  std::string complete, truncated; // paths of the archives
};
