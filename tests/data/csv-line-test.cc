#include "data/csv-line.h"

#include <algorithm>

#include "data-checks.h"

namespace {

using Texts = std::vector<std::string>;

struct Split {
  Texts fields;
  Texts botched; // "number:text"
};

Split split(const std::string& line)
{
  Split result;
  CsvLine split;
  split.split(line, [&](std::size_t number, const Glib::ustring& text) {
    result.botched.push_back(std::to_string(number) + ":" + text.raw());
  });
  result.fields = bytes(split.fields());
  return result;
}

struct Case {
  const char* why;
  std::string line;
  Texts fields;
};

void expect_fields(const std::vector<Case>& cases)
{
  for (const auto& c : cases) {
    const Split result = split(c.line);
    EXPECT_EQ(c.fields, result.fields) << c.why;
    EXPECT_EQ(Texts(), result.botched) << c.why;
  }
}

} // namespace

TEST(CsvLine, IsSplitAtItsCommas)
{
  expect_fields({
      {"an empty line has no field", "", {}},
      {"one field", "a", {"a"}},
      {"two fields", "a,b", {"a", "b"}},
      {"a last comma adds an empty field", "a,b,", {"a", "b", ""}},
      {"one comma", ",", {"", ""}},
      {"two commas", ",,", {"", "", ""}},
      {"empty field in the middle", "a,,b", {"a", "", "b"}},
      {"empty field in front", ",a", {"", "a"}},
      {"blanks are text", " a , b ", {" a ", " b "}},
      {"tabs are text", "\ta,b\t", {"\ta", "b\t"}},
      {"characters of several bytes", "jocú,pez león,鱼", {"jocú", "pez león", "鱼"}},
      {"a number sign does not start a comment", "#a,b", {"#a", "b"}},
      {"a byte-order mark is text",
       "\xEF\xBB\xBF"
       "a,b",
       {"\xEF\xBB\xBF"
        "a",
        "b"}},
  });
}

TEST(CsvLine, DropsACarriageReturnWhereAFieldWouldStart)
{
  expect_fields({
      {"at the end", "a,b\r", {"a", "b"}},
      {"after a last comma: no empty field", "a,b,\r", {"a", "b"}},
      {"an empty last field has to be quoted", "a,b,\"\"\r", {"a", "b", ""}},
      {"in the middle of text it separates two fields", "ab\rcd", {"ab", "cd"}},
      {"alone it is not a field", "\r", {}},
      {"several", "\r\ra\r\r,b", {"a", "", "b"}},
      {"after a quoted field", "\"a\"\rb", {"a", "b"}},
      {"escaped it is text", "a\\\rb", {"a\rb"}},
      {"inside quotes it is text", "\"a\rb\"", {"a\rb"}},
  });
}

TEST(CsvLine, ReadsQuotedFields)
{
  expect_fields({
      {"quotes hide a comma", "\"a,b\",c", {"a,b", "c"}},
      {"empty quotes", "\"\"", {""}},
      {"empty quotes and a last comma", "\"\",", {"", ""}},
      {"two quotes represent one", "\"ab\"\"c\"", {"ab\"c"}},
      {"a backslash keeps a quote from closing", "\"a\\\"b\"", {"a\"b"}},
      {"a backslash and a letter are not an escape sequence", "\"a\\nb\"", {"anb"}},
      {"two backslashes", "\"a\\\\\",b", {"a\\", "b"}},
      {"backslash before a character of two bytes", "\"a\\úb\"", {"aúb"}},
      {"never closed", "\"a,b", {"a,b"}},
      {"never closed and empty", "a,\"", {"a", ""}},
      {"never closed after a doubled quote", "\"a\"\"", {"a\""}},
      {"a last backslash is kept", "\"a\\", {"a\\"}},
      {"after a leading blank a quote is text", " \"a\",b", {" \"a\"", "b"}},
  });
}

TEST(CsvLine, ReadsUnquotedFields)
{
  expect_fields({
      {"an escaped comma is text", "a\\,b", {"a,b"}},
      {"a quote is text", "5\"", {"5\""}},
      {"a quote in the middle is text", "5\"x,y", {"5\"x", "y"}},
      {"an escaped backslash", "a\\\\,b", {"a\\", "b"}},
      {"a last backslash is kept", "a,b\\", {"a", "b\\"}},
      {"nothing but a backslash", "\\", {"\\"}},
      {"an escaped quote in front", "\\\"a\\\"", {"\"a\""}},
  });
}

TEST(CsvLine, KeepsTextAfterAClosingQuoteAndReportsIt)
{
  const struct {
    const char* why;
    const char* line;
    Texts fields;
    Texts botched;
  } cases[] = {
      {"up to the comma", "\"abc\"def,x", {"\"abc\"def", "x"}, {"1:\"abc\"def"}},
      {"up to the end", "x,\"abc\"def", {"x", "\"abc\"def"}, {"2:\"abc\"def"}},
      {"up to the carriage return", "\"a\"b\r", {"\"a\"b"}, {"1:\"a\"b"}},
      {"the decoded text between the quotes", "\"a\"\"b\"c", {"\"a\"b\"c"}, {"1:\"a\"b\"c"}},
      {"the rest is not decoded", "\"a\"\\,b", {"\"a\"\\", "b"}, {"1:\"a\"\\"}},
      {"quotes in the rest", "\"a\" \"b\",c", {"\"a\" \"b\"", "c"}, {"1:\"a\" \"b\""}},
      {"twice in a line", "\"a\"b,\"c\"d", {"\"a\"b", "\"c\"d"}, {"1:\"a\"b", "2:\"c\"d"}},
      {"followed by a last comma", "\"a\"b,", {"\"a\"b", ""}, {"1:\"a\"b"}},
  };
  for (const auto& c : cases) {
    const Split result = split(c.line);
    EXPECT_EQ(c.fields, result.fields) << c.why;
    EXPECT_EQ(c.botched, result.botched) << c.why;
  }
}

TEST(CsvLine, ReplacesBytesThatAreNotUtf8)
{
  const std::string mark = "\xEF\xBF\xBD";
  expect_fields({
      {"a stray continuation byte", "a\x80z,b", {"a" + mark + "z", "b"}},
      {"a byte that never occurs", "a\xFF,b", {"a" + mark, "b"}},
      {"a lead byte includes the comma in its sequence", "a\xC3,b", {"a" + mark + ",b"}},
      {"a sequence truncated by the end of the line", "a,\xF0\x9F", {"a", mark + mark}},
      {"a lead byte at the end of the line", "a,b\xE2", {"a", "b" + mark}},
      {"a lead byte after a backslash", "a,b\\\xE2", {"a", "b" + mark}},
      {"a lead byte inside quotes", "\"a\xE2", {"a" + mark}},
      {"a lead byte alone", "\xFC", {mark}},
      {"a zero byte", std::string("a\0b,c", 5), {"a" + mark + "b", "c"}},
      {"a surrogate", "\xED\xA0\x80", {mark + mark + mark}},
  });
}

TEST(CsvLine, ReplacesTheFieldsOfThePreviousLine)
{
  CsvLine line;
  line.split("one,two,three");
  line.split("four,");
  EXPECT_EQ(Texts({"four", ""}), bytes(line.fields()));
  line.split("\"a \"\"long\"\" name of a fish\",\"\"\"b\"");
  EXPECT_EQ(Texts({"a \"long\" name of a fish", "\"b"}), bytes(line.fields()));
  line.split("");
  EXPECT_EQ(Texts(), bytes(line.fields()));
}

TEST(CsvLine, IsSplitWithoutAReceiverOfBotchedQuoting)
{
  CsvLine line;
  line.split("\"a\"b,c");
  EXPECT_EQ(Texts({"\"a\"b", "c"}), bytes(line.fields()));
}

TEST(CsvLine, FindsASpecialByteAtEachPlaceOfLinesOfEachLength)
{
  const std::string mark = "\xEF\xBF\xBD";
  for (std::size_t length = 1; length <= 40; ++length) {
    for (std::size_t at = 0; at < length; ++at) {
      const std::string before(at, 'a');
      const std::string after(length - at - 1, 'b');
      SCOPED_TRACE(std::to_string(at) + " of " + std::to_string(length));
      Texts parts = {before, after};
      parts.erase(std::remove(parts.begin(), parts.end(), ""), parts.end());
      expect_fields({
          {"a byte that never occurs", before + "\xFF" + after, {before + mark + after}},
          {"a zero byte", before + '\0' + after, {before + mark + after}},
          {"a carriage return", before + "\r" + after, parts},
          {"a backslash", before + "\\" + after, {before + (after.empty() ? "\\" : "") + after}},
          {"a quote", before + ",\"" + after, {before, after}},
      });
    }
  }
}
