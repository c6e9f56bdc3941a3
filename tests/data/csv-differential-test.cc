#include "data/csv-line.h"
#include "data/naive-csv-line.h"

#include <cstdio>
#include <iterator>
#include <random>

#include "data-checks.h"

namespace {

#ifdef __SANITIZE_ADDRESS__
constexpr int lines = 200'000; // five times as slow
#else
constexpr int lines = 1'000'000;
#endif
constexpr unsigned int seed = 20210630;

// Creates random lines. They consist of characters that separate fields, of characters of every
// length in UTF-8 (up to six bytes, as in its first definition), and of truncated and overlong
// sequences.
class OddLines
{
public:
  std::string next()
  {
    static const std::string pieces[] = {
        "\"",
        "\"",
        "\"\"",
        "\\",
        "\\",
        ",",
        ",",
        "\r",
        "a",
        "bc",
        " ",
        "5",
        std::string(1, '\0'),
        "\t",
        "\xC3\xBA",                 // ú
        "\xE9\xB1\xBC",             // 鱼
        "\xF0\x9F\x90\x9F",         // a fish
        "\xF8\x88\x80\x80\x80",     // five bytes
        "\xFC\x84\x80\x80\x80\x80", // six bytes
        "\xC3",
        "\xE9\xB1",
        "\xF0\x9F\x90",
        "\xF8\x88",
        "\xFD",
        "\x80",
        "\xBF",
        "\xFE",
        "\xFF",
        "\xC0\x80",         // an overlong zero
        "\xE0\x80\xAF",     // an overlong slash
        "\xED\xA0\x80",     // an unpaired surrogate
        "\xEF\xBF\xBF",     // not a character, but valid
        "\xF4\x90\x80\x80", // beyond the last character
        "\xEF\xBB\xBF",     // byte-order mark
    };
    std::string line;
    for (auto count = random() % 14; count > 0; --count)
      line += pieces[random() % std::size(pieces)];
    return line;
  }

private:
  std::mt19937 random{seed};
};

// Returns the bytes in hexadecimal.
std::string hexadecimal(const std::string& line)
{
  std::string text;
  for (const char c : line) {
    char code[8];
    std::snprintf(code, sizeof code, " %02X", static_cast<unsigned char>(c));
    text += code;
  }
  return text;
}

} // namespace

TEST(CsvLine, IsReadLikeByANaiveReader)
{
  OddLines odd_lines;
  CsvLine split;
  std::vector<std::string> botched;
  const auto note = [&](std::size_t column, const Glib::ustring& text) {
    botched.push_back(std::to_string(column) + ":" + text.raw());
  };
  std::size_t fields_seen = 0;
  std::size_t botched_seen = 0;
  for (int i = 0; i < lines && !HasFailure(); ++i) {
    const std::string line = odd_lines.next();
    botched.clear();
    split.split(line, note);

    const NaiveCsvLine naive(line);
    ASSERT_EQ(naive.fields, bytes(split.fields())) << "line" << hexadecimal(line);
    ASSERT_EQ(naive.botched.size(), botched.size()) << "line" << hexadecimal(line);
    for (std::size_t b = 0; b < botched.size(); ++b)
      ASSERT_EQ(std::to_string(naive.botched[b].column) + ":" + naive.botched[b].text, botched[b])
          << "line" << hexadecimal(line);
    fields_seen += split.fields().size();
    botched_seen += botched.size();
  }
  RecordProperty("tried", lines);
  EXPECT_LT(lines, static_cast<int>(fields_seen));
  EXPECT_LT(lines / 100, static_cast<int>(botched_seen));
  std::printf("%d lines of seed %u compared, with %zu fields, %zu of them botched\n", lines, seed,
              fields_seen, botched_seen);
}
