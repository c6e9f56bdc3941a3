#include "data/data-file.h"
#include "data/file-lines.h"

#include <gtest/gtest.h>

#include <sstream>
#include <vector>

namespace {

std::vector<std::string> lines_of(const std::string& text)
{
  std::istringstream in(text);
  FileLines lines(in);
  std::vector<std::string> found;
  for (std::string_view line; lines.next(line);)
    found.emplace_back(line);
  return found;
}

} // namespace

TEST(FileLines, EndOnlyAtLineFeeds)
{
  using Lines = std::vector<std::string>;
  const struct {
    std::string text;
    Lines lines;
  } cases[] = {
      {"", {}},
      {"\n", {""}},
      {"\n\n", {"", ""}},
      {"a", {"a"}},
      {"a\n", {"a"}},
      {"a\nb", {"a", "b"}},
      {"a\n\nb\n", {"a", "", "b"}},
      {"a\r\nb\rc\n", {"a\r", "b\rc"}},
      {std::string("a\0b\nc", 5), {std::string("a\0b", 3), "c"}},
  };
  for (const auto& c : cases)
    EXPECT_EQ(c.lines, lines_of(c.text)) << c.text;
}

TEST(FileLines, MayHaveAnyLength)
{
  std::string text;
  std::vector<std::string> lines;
  for (const std::size_t length :
       {16'383U, 16'384U, 0U, 16'385U, 1U, 100'000U, 32'766U, 32'767U, 5U}) {
    lines.emplace_back(length, static_cast<char>('a' + lines.size()));
    text += lines.back() + '\n';
    EXPECT_EQ(lines, lines_of(text)) << length;
  }
  text.pop_back();
  EXPECT_EQ(lines, lines_of(text)) << "without the last line feed";
}

TEST(FileLines, EndWhereReadingFails)
{
  std::istringstream in("a\nb\n");
  in.setstate(std::ios::badbit);
  FileLines lines(in);
  std::string_view line;
  EXPECT_FALSE(lines.next(line));
  EXPECT_FALSE(lines.next(line));
}

TEST(FileLines, EndWhereALineIsTooLong)
{
  const std::string longest(longest_data_line, 'x');
  EXPECT_EQ(2U, lines_of(longest + "\n" + longest).size());
  for (const std::string& text : {longest + "x", longest + "x\nb\n"}) {
    std::istringstream in("a\n" + text);
    FileLines lines(in);
    std::string_view line;
    EXPECT_TRUE(lines.next(line));
    EXPECT_EQ(FileLines::Excess::NONE, lines.excess());
    EXPECT_FALSE(lines.next(line));
    EXPECT_EQ(FileLines::Excess::LINE_LENGTH, lines.excess());
    EXPECT_FALSE(lines.next(line)) << "it does not continue after the long line";
  }
}

TEST(FileLines, EndWhereTheFileIsTooLarge)
{
  const auto excess_of = [](std::size_t size) {
    std::string text(size, 'x');
    for (std::size_t end = 99; end < size; end += 100)
      text[end] = '\n';
    std::istringstream in(text);
    FileLines lines(in);
    for (std::string_view line; lines.next(line);) {
    }
    return lines.excess();
  };
  EXPECT_EQ(FileLines::Excess::NONE, excess_of(largest_data_file));
  EXPECT_EQ(FileLines::Excess::FILE_SIZE, excess_of(largest_data_file + 1));
}
