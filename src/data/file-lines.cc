#include "data/file-lines.h"

#include "data/data-file.h"

#include <cstring>

FileLines::FileLines(std::istream& the_in) : in(the_in) {}

bool FileLines::next(std::string_view& line)
{
  const char* feed = find_feed(line_start);
  while (!feed) {
    const std::size_t searched = text.size() - line_start;
    if (searched > longest_data_line || !read_more())
      break;
    feed = find_feed(searched);
  }
  if (exceeded != Excess::NONE)
    return false;
  const char* const start = text.data() + line_start;
  const char* const end = feed ? feed : text.data() + text.size();
  line = {start, static_cast<std::size_t>(end - start)};
  line_start += line.size() + (feed ? 1 : 0);
  if (line.size() > longest_data_line) {
    exceeded = Excess::LINE_LENGTH;
    return false;
  }
  return feed || !line.empty();
}

const char* FileLines::find_feed(std::size_t from) const
{
  // NOLINTNEXTLINE(bugprone-not-null-terminated-result): this searches and writes nothing
  return static_cast<const char*>(std::memchr(text.data() + from, '\n', text.size() - from));
}

// Appends more of the file to the incomplete line.
bool FileLines::read_more()
{
  constexpr std::size_t block = 16'384;
  text.erase(0, line_start);
  line_start = 0;
  const std::size_t kept = text.size();
  text.resize(kept + block);
  in.read(text.data() + kept, block);
  text.resize(kept + static_cast<std::size_t>(in.gcount()));
  total_read += text.size() - kept;
  if (total_read > largest_data_file) {
    exceeded = Excess::FILE_SIZE;
    return false;
  }
  return text.size() > kept;
}
