#include "core/file-contents.h"
#include "support/data-set.h"

#include <giomm/error.h>
#include <glibmm/fileutils.h>
#include <gtest/gtest.h>

TEST(FileContents, AreAllBytesOfTheFile)
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
