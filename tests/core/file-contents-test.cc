#include "core/file-contents.h"
#include "support/data-set.h"

#include <fcntl.h>
#include <giomm/error.h>
#include <glibmm/fileutils.h>
#include <gtest/gtest.h>

#include <cerrno>
#include <limits>

TEST(FileContents, ContainAllBytesOfTheFile)
{
  const DataSet directory;
  const std::string texts[] = {
      "",
      "two\nlines\n",
      "caf\u00e9",
      "not \xff UTF-8",
      std::string("a\0b", 3),
      std::string(300000, 'x'),
  };
  for (const auto& text : texts) {
    directory.file("text", text);
    EXPECT_TRUE(text == read_file_contents(directory.dir + "text").raw()) << text.substr(0, 20);
  }
}

TEST(FileContents, ThrowWhatTheLibraryThrows)
{
  const DataSet directory;
  EXPECT_THROW(read_file_contents(directory.dir + "missing"), Gio::Error);
  EXPECT_THROW(read_file_contents(directory.dir), Glib::Error) << "a directory";
}

namespace {

Descriptor opened(const std::string& path)
{
  return Descriptor(open(path.c_str(), O_RDONLY | O_CLOEXEC));
}

} // namespace

TEST(FileBytes, AreReadFromTheStartUpToALimit)
{
  const DataSet directory;
  const std::string text = std::string(200000, 'x') + '\0' + "end";
  directory.file("text", text);
  const Descriptor file = opened(directory.dir + "text");
  for (const std::size_t most : {0UL, 1UL, 65536UL, 65537UL, text.size() - 1, text.size()})
    EXPECT_TRUE(text.substr(0, most) == read_bytes(file, most)) << most;
  EXPECT_TRUE(text == read_bytes(file, std::numeric_limits<std::size_t>::max()));
}

TEST(FileBytes, AreNotReturnedIfReadingFails)
{
  const DataSet directory;
  errno = 0;
  EXPECT_FALSE(read_bytes(opened(directory.dir), 10));
  EXPECT_EQ(EISDIR, errno);
}
