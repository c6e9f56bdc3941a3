#pragma once

#include "core/c-resource.h"

#include <filesystem>
#include <system_error>

// The local copy of the data as it was before a newer one is unpacked over it:
// half of that would keep the program from starting. It is kept under a name of
// its own in the same directory, so that it is also there after the program was
// killed on the way. It is made of hard links where that is possible, which take
// no room; tar replaces files and never writes into them.
class FormerData
{
public:
  // Keeps what is in `directory`, the one that holds data-files. Another program
  // that has the same in mind is waited for.
  explicit FormerData(std::filesystem::path directory);
  // Puts the former data back unless they were let go.
  ~FormerData();
  FormerData(const FormerData&) = delete;
  FormerData& operator=(const FormerData&) = delete;

  // Why the former data could not be kept; nothing may be unpacked over them then.
  std::error_code failure() const { return not_kept; }
  // To be called once the newer data are whole: waits until the disk has them, and
  // removes the former ones. After a failure those are still the ones that count.
  std::error_code let_go();

  // Puts back what a program has kept in this directory that could not let it go,
  // if there is such a thing: what was unpacked over the data is gone then. Waits
  // for a program that is unpacking there just now, and for the commands of one
  // that was killed meanwhile.
  static void put_back(const std::filesystem::path& directory);

private:
  const std::filesystem::path directory;
  const Descriptor lock;
  std::error_code not_kept;
};
