// Target: the metadata of a data set. Adds an equals sign to each line that has none, because
// such a line ends the program.
#include "data/data-file-info.h"

#include "target.h"

namespace {

const std::string key_of_time = "timestamp=";

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
  static const Scratch scratch;
  std::string text;
  std::string timestamp;
  for (std::string line : lines_of(bytes_of(data, size))) {
    if (!line.empty() && line.find('=') == std::string::npos)
      line += '=';
    if (line.rfind(key_of_time, 0) == 0)
      timestamp = line.substr(key_of_time.size());
    text += line + "\n";
  }
  scratch.write(DataFileInfo::get_filename(), text);
  const DataFileInfo info(scratch.dir);
  require(info.timestamp == timestamp, "the last timestamp counts, byte for byte");
  require(info.valid == (!info.timestamp.empty() && !info.updated.empty()),
          "a set is valid if, and only if, it has a timestamp and a date");
  return 0;
}
