#pragma once

#include <filesystem>

// The local copy of the data as it was before a newer one is unpacked over it:
// half of that would keep the program from starting. Kept from the constructor
// to the destructor, under a name of its own in the same directory, so that it
// is also there after the program was killed on the way. It is made of hard
// links where that is possible, which take no room; tar replaces files and never
// writes into them.
class FormerData
{
public:
  // `directory` is that of the local copies, which holds data-files. If nothing
  // can be kept there, the newer data have to do without.
  explicit FormerData(std::filesystem::path directory);
  ~FormerData();
  FormerData(const FormerData&) = delete;
  FormerData& operator=(const FormerData&) = delete;

  // Puts back what a FormerData has kept in this directory and could not remove,
  // if there is such a thing: what was unpacked over the data is gone then.
  static void put_back(const std::filesystem::path& directory);

private:
  const std::filesystem::path directory;
};
