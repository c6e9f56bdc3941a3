#include "data/from-csv.h"
#include "support/data-set.h"
#include "support/output.h"

#include <glibmm/miscutils.h>
#include <sys/stat.h>

#include "data-checks.h"

namespace {

const char* const two_headings[] = {"a", "b", nullptr};

// Stores the rows that it gets.
class Rows : public FromCSV
{
public:
  RetCode process_line(const std::vector<Glib::ustring>& fields) override
  {
    if (fields.empty()) {
      ++ends;
      return end_result;
    }
    std::string row;
    for (std::size_t i = 0; i < 2; ++i)
      row += field(fields, i).raw() + "|";
    rows.push_back(row);
    return row_result;
  }
  RetCode process_headings(const std::vector<Glib::ustring>& the_headings) override
  {
    ++heading_calls;
    return verify_headings(the_headings, two_headings);
  }
  RetCode read(const std::string& text)
  {
    data.file("rows.csv", text);
    return read_file(data.dir + "rows.csv");
  }

  DataSet data;
  std::vector<std::string> rows; // "a|b|"
  int ends = 0;
  int heading_calls = 0;
  RetCode row_result = RET_SUCCESS;
  RetCode end_result = RET_SUCCESS;
};

using Texts = std::vector<std::string>;

// Uses the default handling of headings and stores all fields.
class PlainRows : public FromCSV
{
public:
  RetCode process_line(const std::vector<Glib::ustring>& fields) override
  {
    rows.push_back(bytes(fields));
    return RET_SUCCESS;
  }
  std::vector<Texts> rows;
};

} // namespace

TEST(FromCSV, IsInvalidUntilAReaderSetsIt)
{
  const Rows rows;
  EXPECT_FALSE(rows.is_valid());
  EXPECT_TRUE(rows.filename.empty());
}

TEST(FromCSV, ReportsAFileThatCannotBeOpened)
{
  Rows rows;
  const std::string fifo = rows.data.dir + "fifo.csv";
  ASSERT_EQ(0, mkfifo(fifo.c_str(), 0600));
  const struct {
    const char* why;
    std::string path;
  } cases[] = {
      {"no such file", rows.data.dir + "no-such.csv"},
      {"a directory", rows.data.dir},
      {"a pipe that nobody writes to", fifo},
      {"a file that opens but cannot be read", "/proc/self/mem"},
  };
  for (const auto& c : cases) {
    RetCode result = RET_SUCCESS;
    EXPECT_EQ("Failed to open " + c.path + "!\n",
              output_of([&] { result = rows.read_file(c.path); }))
        << c.why;
    EXPECT_EQ(RET_FAILURE, result) << c.why;
    EXPECT_TRUE(rows.filename.empty()) << c.why;
  }
  EXPECT_EQ(0, rows.ends + rows.heading_calls);
}

TEST(FromCSV, PassesOnEachRowAndThenTheEnd)
{
  Rows rows;
  EXPECT_EQ(RET_SUCCESS, rows.read("a,b\n1,2\n3,4\n"));
  EXPECT_EQ(Texts({"1|2|", "3|4|"}), rows.rows);
  EXPECT_EQ(1, rows.heading_calls);
  EXPECT_EQ(1, rows.ends);
  EXPECT_EQ(rows.data.dir + "rows.csv", rows.filename.raw());
  EXPECT_TRUE(rows.headings.empty());
}

TEST(FromCSV, PassesOnOnlyTheEndOfAnEmptyFile)
{
  for (const RetCode end_result : {RET_SUCCESS, RET_DECLINED}) {
    Rows rows;
    rows.end_result = end_result;
    EXPECT_EQ(end_result, rows.read(""));
    EXPECT_EQ(0, rows.heading_calls);
    EXPECT_EQ(1, rows.ends);
  }
}

TEST(FromCSV, AcceptsAFileWithOnlyHeadings)
{
  Rows rows;
  EXPECT_EQ(RET_SUCCESS, rows.read("a,b\n"));
  EXPECT_TRUE(rows.rows.empty());
  EXPECT_EQ(1, rows.heading_calls);
  EXPECT_EQ(1, rows.ends);
}

TEST(FromCSV, ReadsALastLineWithoutLineFeed)
{
  Rows rows;
  EXPECT_EQ(RET_SUCCESS, rows.read("a,b\n1,2\n3,4"));
  EXPECT_EQ(Texts({"1|2|", "3|4|"}), rows.rows);
}

TEST(FromCSV, ReadsLinesThatEndInACarriageReturn)
{
  Rows rows;
  EXPECT_EQ(RET_SUCCESS, rows.read("a,b\r\n1,2\r\n3,\"\"\r\n"));
  EXPECT_EQ(Texts({"1|2|", "3||"}), rows.rows);
}

TEST(FromCSV, SkipsBlankLinesButCountsThem)
{
  Rows rows;
  RetCode result = RET_SUCCESS;
  const std::string report = reported_by([&] { result = rows.read("\n\na,b\n\n1,2\n\n1,2,3\n"); });
  EXPECT_EQ(RET_FAILURE, result);
  EXPECT_EQ(Texts({"1|2|"}), rows.rows);
  EXPECT_EQ("*** ERROR: Data file error: " + rows.data.dir +
                "rows.csv line 7 has 3 columns rather than 2\n",
            report);
  EXPECT_EQ(0, rows.ends);
}

TEST(FromCSV, RefusesARowOfTheWrongWidth)
{
  const struct {
    const char* why;
    const char* text;
    const char* complaint;
  } cases[] = {
      {"too short", "a,b\n1\n", "line 2 has 1 columns rather than 2"},
      {"too long", "a,b\n1,2,3\n", "line 2 has 3 columns rather than 2"},
      {"a lone carriage return is not blank", "a,b\n\r\n", "line 2 has 0 columns rather than 2"},
      {"an empty last field before a carriage return", "a,b\n1,\r\n",
       "line 2 has 1 columns rather than 2"},
      {"a duplicate heading requires one column less", "a,b,b\n1,2,3\n",
       "line 2 has 3 columns rather than 2"},
      {"a comma after the headings requires one column more", "a,b,\n1,2\n",
       "line 2 has 2 columns rather than 3"},
  };
  for (const auto& c : cases) {
    Rows rows;
    RetCode result = RET_SUCCESS;
    const std::string report = reported_by([&] { result = rows.read(c.text); });
    EXPECT_EQ(RET_FAILURE, result) << c.why;
    EXPECT_NE(std::string::npos, report.find(c.complaint)) << c.why << ": " << report;
    EXPECT_EQ(Texts(), rows.rows) << c.why;
    EXPECT_EQ(0, rows.ends) << c.why;
  }
}

TEST(FromCSV, EscapesThePathInMessages)
{
  Rows rows;
  const std::string path = rows.data.dir + "fish & <chips>.csv";
  write_file(path, "a,b\n1\n");
  EXPECT_NE(std::string::npos,
            reported_by([&] { rows.read_file(path); }).find("fish & <chips>.csv line 2"));
}

TEST(FromCSV, ReportsEveryMissingHeading)
{
  const struct {
    const char* why;
    const char* text;
    const char* printed;
  } cases[] = {
      {"one", "a,c\n1,2\n", "missing heading \"b\"\n"},
      {"all", "c,d\n1,2\n", "missing heading \"a\"\nmissing heading \"b\"\n"},
      {"case counts", "A,b\n", "missing heading \"a\"\n"},
      {"blanks count", "a ,b\n", "missing heading \"a\"\n"},
      {"a byte-order mark hides the first",
       "\xEF\xBB\xBF"
       "a,b\n",
       "missing heading \"a\"\n"},
      {"a lone carriage return has no headings", "\r\na,b\n",
       "missing heading \"a\"\nmissing heading \"b\"\n"},
  };
  for (const auto& c : cases) {
    Rows rows;
    RetCode result = RET_SUCCESS;
    EXPECT_EQ(c.printed, output_of([&] { result = rows.read(c.text); })) << c.why;
    EXPECT_EQ(RET_MISSING_HEADING, result) << c.why;
    EXPECT_TRUE(rows.rows.empty()) << c.why;
    EXPECT_EQ(0, rows.ends) << c.why;
  }
}

TEST(FromCSV, FindsColumnsByTheirHeadings)
{
  Rows rows;
  EXPECT_EQ(RET_SUCCESS, rows.read("x,b,y,a\n1,2,3,4\n"));
  EXPECT_EQ(Texts({"4|2|"}), rows.rows);
  EXPECT_EQ(4U, rows.column_index.size());
  EXPECT_EQ(3U, rows.column_index["a"]);
}

TEST(FromCSV, SkipsRowsThatLackTheSecondColumnOfAHeading)
{
  Rows rows;
  RetCode result = RET_FAILURE;
  const std::string out = output_of([&] { result = rows.read("a,b,a\n1,2\n3,4\n"); });
  EXPECT_EQ(RET_SUCCESS, result);
  EXPECT_EQ(2U, rows.column_index["a"]);
  EXPECT_EQ(Texts(), rows.rows);
  EXPECT_EQ(1, rows.ends);
  EXPECT_NE(std::string::npos, out.find("line 2 is skipped")) << out;
  EXPECT_NE(std::string::npos, out.find("line 3 is skipped")) << out;
}

TEST(FromCSV, UsesTheLastColumnOfADuplicateHeading)
{
  Rows rows;
  EXPECT_EQ(RET_SUCCESS, rows.read("a,a,b,x,x\n1,2,3\n"));
  EXPECT_EQ(Texts({"2|3|"}), rows.rows);
}

TEST(FromCSV, KeepsAndReportsARowWithBotchedQuoting)
{
  Rows rows;
  RetCode result = RET_FAILURE;
  const std::string out = output_of([&] { result = rows.read("a,b\n1,\"x\"y\n"); });
  EXPECT_EQ(RET_SUCCESS, result);
  EXPECT_EQ(rows.data.dir + "rows.csv line 2 column 2 has botched quoting: \"x\"y\n", out);
  EXPECT_EQ(Texts({"1|\"x\"y|"}), rows.rows);
}

TEST(FromCSV, DoesNotReportAFieldThatIsNeverClosed)
{
  Rows rows;
  EXPECT_EQ("", output_of([&] { rows.read("a,b\n1,\"2,3\n4,5\n"); }));
  EXPECT_EQ(Texts({"1|2,3|", "4|5|"}), rows.rows);
}

TEST(FromCSV, StopsIfTheReaderFails)
{
  Rows rows;
  rows.row_result = RET_DECLINED;
  EXPECT_EQ(RET_DECLINED, rows.read("a,b\n1,2\n3,4\n"));
  EXPECT_EQ(Texts({"1|2|"}), rows.rows);
  EXPECT_EQ(0, rows.ends);
}

TEST(FromCSV, ReturnsTheResultOfTheEndOfTheData)
{
  Rows rows;
  rows.end_result = RET_RESERVED_8;
  EXPECT_EQ(RET_RESERVED_8, rows.read("a,b\n1,2\n"));
}

TEST(FromCSV, KeepsTheHeadingsOfAReaderThatDoesNotCheckThem)
{
  PlainRows rows;
  const DataSet data;
  data.file("rows.csv", "a,b\n1,2\n");
  RetCode result = RET_SUCCESS;
  const std::string report = reported_by([&] { result = rows.read_file(data.dir + "rows.csv"); });
  EXPECT_EQ(RET_FAILURE, result);
  EXPECT_NE(std::string::npos, report.find("line 2 has 2 columns rather than 0")) << report;
  EXPECT_EQ(Texts({"a", "b"}), bytes(rows.headings));
  EXPECT_EQ(RET_SUCCESS, rows.process_headings(rows.headings));
  EXPECT_EQ(Texts({"a", "b"}), bytes(rows.headings));
}

TEST(FromCSV, ReadsTheFirstLineAsDataIfItHasHeadings)
{
  PlainRows rows;
  rows.headings = {"a", "b"};
  rows.column_index = {{"a", 0}, {"b", 1}};
  const DataSet data;
  data.file("rows.csv", "1,2\n3,4\n");
  EXPECT_EQ(RET_SUCCESS, rows.read_file(data.dir + "rows.csv"));
  EXPECT_EQ(std::vector<Texts>({{"1", "2"}, {"3", "4"}, {}}), rows.rows);
}

TEST(Def, CopiesLabelsAndValues)
{
  const FromCSV::Def def({"one", "two"}, {1, 2});
  EXPECT_EQ(Texts({"one", "two"}), bytes(def.labels));
  EXPECT_EQ(std::vector<int>({1, 2}), def.values);
  EXPECT_TRUE(FromCSV::Def().labels.empty());
}
