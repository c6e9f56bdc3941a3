#pragma once

#include <map>
#include <string>

using Files = std::map<std::string, std::string>; // what they hold, by path below a directory

// All files below a directory; fails the test for what is neither file nor directory.
Files files_below(const std::string& directory);

// A directory of local data and the two sets of reference data that a test tells
// apart in it: the old one, which is in use, and the new one, which comes in an
// archive. No file of the one is like that of the other, but for one that the
// archive lacks and that stays as it is.
class LocalData
{
public:
  enum Archive { WHOLE, CUT }; // CUT: ends in the middle of a file
  enum Set { OLD, NEW, NONE, TORN };

  // Makes the sets and archives in `scratch`; `directory` is not touched.
  LocalData(std::string directory, const std::string& scratch);

  // Lets the directory hold the old data and an older archive.
  void start_with_old_data() const;
  // Lets there be no such directory.
  void start_with_nothing() const;
  // Lets it be as a program leaves it that is killed while it unpacks over old data.
  void start_with_torn_data() const;

  // Puts an archive there and unpacks it as the program does, without its messages.
  void install(Archive which) const;

  // Which set is there, every byte of it.
  Set now() const;
  // The names of all that is there besides the set and the archive, temporary
  // names made alike; "backup" if there is one.
  std::string leftovers() const;

  std::string backup() const; // the directory that the program uses for it

  std::string archive(Archive which) const { return which == WHOLE ? whole : cut; }

  const std::string directory;
  static const char* const old_timestamp;
  static const char* const new_timestamp;

private:
  Files old_set, new_set;
  std::string whole, cut; // paths
};
