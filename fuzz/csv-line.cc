// Target: the splitter of data lines. Compares it with a second implementation.
#include "data/csv-line.h"

#include "data/naive-csv-line.h"

#include <cstdlib>

#include "target.h"

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
  const std::string line = bytes_of(data, size);
  const NaiveCsvLine naive(line);
  CsvLine split;
  split.split("of the,line before");
  std::size_t botched = 0;
  split.split(line, [&](std::size_t column, const Glib::ustring& text) {
    require(botched < naive.botched.size() && naive.botched[botched].column == column &&
                naive.botched[botched].text == text.raw(),
            "botched quoting is reported as by the second implementation");
    ++botched;
  });
  require(botched == naive.botched.size(), "all botched quoting is reported");
  require(std::vector<std::string>(split.fields().begin(), split.fields().end()) == naive.fields,
          "the fields are those of the second implementation");
  return 0;
}
