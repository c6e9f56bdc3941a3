#include "core/markup.h"
#include "core/report-presenter.h"
#include "core/report.h"

#include <glibmm/stringutils.h>
#include <glibmm/ustring.h>
#include <gtest/gtest.h>

#include <cerrno>
#include <functional>
#include <iostream>

// Most of these tests have no presenter. Then a report is only its line on standard error.

namespace {

std::string reported(const std::function<void()>& action)
{
  testing::internal::CaptureStderr();
  action();
  return testing::internal::GetCapturedStderr();
}

// Returns the system's text in the language of the tests' locale.
std::string system_text(int number)
{
  return Glib::strerror(number);
}

} // namespace

TEST(Report, IsOneLineOnStandardError)
{
  EXPECT_EQ("*** ERROR: cannot read x: 7\n", reported([] { error("cannot read %s: %d", "x", 7); }));
}

TEST(Report, ReturnsTheCode)
{
  reported([] {
    EXPECT_EQ(RET_FAILURE, error("a"));
    EXPECT_EQ(RET_MISSING_HEADING, error(RET_MISSING_HEADING, "a"));
    EXPECT_EQ(RET_FAILURE, error_errno("a"));
    EXPECT_EQ(RET_DECLINED, error_errno(RET_DECLINED, "a"));
    EXPECT_EQ(RET_FAILURE, titled_error("t", "a"));
    EXPECT_EQ(RET_FAILURE, titled_error_errno("t", "a"));
  });
}

TEST(Report, StartsWithThePrefixOfTheCode)
{
  EXPECT_EQ("*** ERROR: Uh oh, Internal Error: a\n",
            reported([] { error(RET_INTERNAL_ERROR, "a"); }));
  EXPECT_EQ("*** ERROR: Uh oh, a\n", reported([] { error(RET_ASSERTION, "a"); }));
}

TEST(Report, AppendsTheSystemsTextForErrno)
{
  EXPECT_EQ("*** ERROR: cannot: " + system_text(ENOENT) + " (2)\n", reported([] {
              errno = ENOENT;
              error_errno("cannot");
            }));
  const std::string denied = reported([] {
    errno = EACCES;
    titled_error_errno("t", "cannot %s", "x");
  });
  EXPECT_EQ("*** ERROR: cannot x: " + system_text(EACCES) + " (13)\n", denied);
  EXPECT_TRUE(Glib::ustring(denied).validate()); // in every locale
}

TEST(Report, AcceptsAMessageOfAnyLength)
{
  for (const std::size_t length : {1022U, 1023U, 1024U, 1025U, 100000U}) {
    const std::string message(length, 'm');
    EXPECT_EQ("*** ERROR: " + message + "\n", reported([&] { error("%s", message.c_str()); }))
        << length;
  }
}

TEST(Report, ShowsOnStandardErrorTheCharactersThatWereEscapedForTheDialog)
{
  const std::string path = "/home/a & b/<x>/\"y\"/'z' &amp; \x1b";
  EXPECT_EQ("*** ERROR: cannot read " + path + "\n",
            reported([&] { error("cannot read %s", escape_markup(path).c_str()); }));
  EXPECT_EQ("*** ERROR: abun 3 -> resp\n",
            reported([] { titled_error("t", "abun 3 -&gt; resp"); }));
}

TEST(Report, KeepsTheTagsOfAMessageOnStandardError)
{
  const std::string message =
      "write to <a href=\"mailto:a@b.example\">a@b.example</a> & <b>wait</b>";
  EXPECT_EQ("*** ERROR: " + message + "\n", reported([&] { error("%s", message.c_str()); }));
}

TEST(Report, KeepsAnAmpersandThatStartsNoEscape)
{
  for (const std::string message : {"a & b", "&nbsp;", "&", "&#0;"})
    EXPECT_EQ("*** ERROR: " + message + "\n", reported([&] { error("%s", message.c_str()); }));
}

TEST(Report, ReportsTheErrnoFromBeforeTheEvaluationOfItsArguments)
{
  const auto argument = [] {
    errno = ENOENT;
    return "x";
  };
  const std::string expected = ": " + system_text(EACCES) + " (13)\n";
  EXPECT_EQ("*** ERROR: cannot x" + expected, reported([&] {
              errno = EACCES;
              error_errno("cannot %s", argument());
            }));
  EXPECT_EQ("*** ERROR: cannot x" + expected, reported([&] {
              errno = EACCES;
              error_errno(RET_FAILURE, "cannot %s", argument());
            }));
  EXPECT_EQ("*** ERROR: cannot x" + expected, reported([&] {
              errno = EACCES;
              titled_error_errno(argument(), "cannot %s", argument());
            }));
  EXPECT_EXIT((errno = EACCES, fatal_errno("cannot %s", argument())), testing::ExitedWithCode(1),
              "cannot x: " + system_text(EACCES) + " \\(13\\)\n");
  EXPECT_EXIT((errno = EACCES, fatal_errno(RET_RESERVED_8, "cannot %s", argument())),
              testing::ExitedWithCode(2), "cannot x: " + system_text(EACCES) + " \\(13\\)\n");
}

TEST(Report, StartsWithTheErrorContext)
{
  set_error_context("while testing: ");
  EXPECT_EQ("*** ERROR: while testing: a\n", reported([] { error("a"); }));
  set_error_context("");
}

namespace {

// Prints the report to standard error, after its line.
void write_report(const Report& report)
{
  std::cerr << "[" << report.title << "|" << report.text << "|" << report.is_fatal << "]\n";
}

// Makes write_report() the presenter of reports during its lifetime.
class WrittenReports
{
public:
  WrittenReports() { set_report_presenter(&write_report); }
  ~WrittenReports() { set_report_presenter(nullptr); }
  WrittenReports(const WrittenReports&) = delete;
  WrittenReports& operator=(const WrittenReports&) = delete;
};

} // namespace

TEST(ReportPresenter, GetsEachReportAsMarkupAfterItsLine)
{
  const WrittenReports presented;
  EXPECT_EQ("*** ERROR: a & <b>b</b>\n[Error occurred|a &amp; <b>b</b>|0]\n",
            reported([] { error("%s", "a &amp; <b>b</b>"); }));
  EXPECT_EQ("*** ERROR: Uh oh, a\n[Error occurred|Uh oh, a|0]\n",
            reported([] { error(RET_ASSERTION, "a"); }));
  EXPECT_EQ("*** ERROR: long\n[Error occurred|short|0]\n",
            reported([] { long_error("long", "short"); }));
}

TEST(ReportPresenter, GetsTheTitleOfTheReport)
{
  const WrittenReports presented;
  EXPECT_EQ("*** ERROR: a\n[Oh no|a|0]\n", reported([] { titled_error("Oh no", "a"); }));
  EXPECT_EQ("*** ERROR: a\n[Error occurred|a|0]\n", reported([] { titled_error("", "a"); }));
}

TEST(ReportPresenter, GetsAFatalReportBeforeTheProcessEnds)
{
  const WrittenReports presented;
  EXPECT_EXIT(fatal(RET_ASSERTION, "all is lost"), testing::ExitedWithCode(47),
              "FATAL ERROR: Uh oh, all is lost\n.Error occurred.Uh oh, all is lost.1.\n");
}

TEST(ReportPresenter, IsNotCalledAfterItIsRemoved)
{
  {
    const WrittenReports presented;
  }
  EXPECT_EQ("*** ERROR: a\n", reported([] { error("a"); }));
}

TEST(TranslateCode, ReturnsTheStatusOfEachCode)
{
  const struct {
    int code;
    int status;
  } cases[] = {{-1, 1}, {0, 1}, {1, 1}, {2, 0},  {3, 1},   {4, 1},   {5, 1},  {6, 1},
               {7, 1},  {8, 2}, {9, 1}, {10, 1}, {11, 45}, {12, 47}, {13, 1}, {15, 1}};
  for (const auto& c : cases)
    EXPECT_EQ(c.status, translate_code(static_cast<RetCode>(c.code))) << c.code;
}

TEST(FatalReport, EndsTheProcessWithTheStatusOfItsCode)
{
  EXPECT_EXIT(fatal("gone %d", 1), testing::ExitedWithCode(1), "FATAL ERROR: gone 1\n");
  EXPECT_EXIT(fatal(RET_SUCCESS, "a"), testing::ExitedWithCode(0), "FATAL ERROR: a\n");
  EXPECT_EXIT(fatal(RET_RESERVED_8, "a"), testing::ExitedWithCode(2), "FATAL ERROR: a\n");
  EXPECT_EXIT(fatal(RET_INTERNAL_ERROR, "a"), testing::ExitedWithCode(45),
              "FATAL ERROR: Uh oh, Internal Error: a\n");
  EXPECT_EXIT(fatal(RET_ASSERTION, "a"), testing::ExitedWithCode(47), "FATAL ERROR: Uh oh, a\n");
  EXPECT_EXIT((errno = EACCES, fatal_errno("a")), testing::ExitedWithCode(1),
              "FATAL ERROR: a: " + system_text(EACCES) + " \\(13\\)\n");
  EXPECT_EXIT((errno = EACCES, fatal_errno(RET_RESERVED_8, "a")), testing::ExitedWithCode(2),
              "FATAL ERROR: a: " + system_text(EACCES) + " \\(13\\)\n");
}

TEST(AssertFailure, NamesTheExpressionAndItsPosition)
{
  EXPECT_EXIT(assert_failure("a != b", "some-file", 12), testing::ExitedWithCode(47),
              "FATAL ERROR: Uh oh, Assertion failed at some-file line 12: a != b\n");
}
