#include <gtest/gtest.h>
#include <unistd.h>

#include <functional>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "cli/could-not-run.h"
#include "cli/finding-writer.h"
#include "cli/output.h"

namespace {

const Finding with_line{"data/PAC-geog.csv", 12, "zone-no-parent", Severity::warning,
                        "The zone appears at the level above"};
const Finding without_line{
    "data/habitat.csv", {}, "file-missing", Severity::error, "The program does not start"};
const Finding a_hint{"data/habitat.csv", 3, "id-gaps", Severity::hint, "It costs memory"};

// Runs the action in a child process, because Output takes over standard output permanently.
// Returns the output.
std::string written_by(const std::function<void(Output&)>& action)
{
  int ends[2];
  EXPECT_EQ(0, pipe(ends));
  const pid_t child = fork();
  if (child == 0) {
    dup2(ends[1], STDOUT_FILENO);
    Output out;
    action(out);
    out.flush();
    _exit(0);
  }
  close(ends[1]);
  std::string text;
  char buffer[4096];
  for (ssize_t got = 0; (got = read(ends[0], buffer, sizeof buffer)) > 0;)
    text.append(buffer, static_cast<std::size_t>(got));
  close(ends[0]);
  return text;
}

std::string written(FindingWriter::Format format, const std::vector<Finding>& findings)
{
  return written_by([&](Output& out) {
    FindingWriter writer(out, format, false);
    for (const Finding& finding : findings)
      writer.write(finding);
  });
}

std::string status_of(bool strict, const std::vector<Finding>& findings)
{
  return written_by([&](Output& out) {
    FindingWriter writer(out, FindingWriter::Format::PLAIN, strict);
    for (const Finding& finding : findings)
      writer.write(finding);
    out.write(writer.status() == ExitStatus::FINE ? "FINE" : "FAULTS");
  });
}

bool ends_with(const std::string& text, const std::string& end)
{
  return text.size() >= end.size() && text.compare(text.size() - end.size(), end.size(), end) == 0;
}

} // namespace

TEST(FindingWriter, WritesOneReadableLineForEachFinding)
{
  EXPECT_EQ("data/PAC-geog.csv:12: warning: The zone appears at the level above [zone-no-parent]\n"
            "data/habitat.csv: error: The program does not start [file-missing]\n"
            "data/habitat.csv:3: hint: It costs memory [id-gaps]\n",
            written(FindingWriter::Format::PLAIN, {with_line, without_line, a_hint}));
}

TEST(FindingWriter, WritesOneJsonObjectForEachFinding)
{
  EXPECT_EQ(R"({"file":"data/PAC-geog.csv","line":12,"rule":"zone-no-parent",)"
            R"("severity":"warning","consequence":"The zone appears at the level above"})"
            "\n"
            R"({"file":"data/habitat.csv","line":null,"rule":"file-missing",)"
            R"("severity":"error","consequence":"The program does not start"})"
            "\n",
            written(FindingWriter::Format::JSON, {with_line, without_line}));
}

TEST(FindingWriter, KeepsAnyTextInOneLineOfJson)
{
  const Finding odd{"a\"b\n\xff", 1, "rule", Severity::error, "\"quoted\" <b> \\ \x1b[31m \xc3"};
  const auto read = nlohmann::json::parse(written(FindingWriter::Format::JSON, {odd}));
  EXPECT_EQ("a\"b\n\uFFFD", read["file"]);
  EXPECT_EQ("\"quoted\" <b> \\ \x1b[31m \uFFFD", read["consequence"]);
}

TEST(FindingWriter, PrintsNoControlCharacters)
{
  const Finding odd{"a\nb\xff", 1, "rule", Severity::error, "red \x1b[31m"};
  EXPECT_EQ("a\uFFFDb\uFFFD:1: error: red \uFFFD[31m [rule]\n",
            written(FindingWriter::Format::PLAIN, {odd}));
}

TEST(FindingWriter, CountsErrorsButNotHintsAsFaults)
{
  EXPECT_EQ("FINE", status_of(true, {}));
  EXPECT_TRUE(ends_with(status_of(true, {a_hint}), "\nFINE"));
  EXPECT_TRUE(ends_with(status_of(false, {without_line}), "\nFAULTS"));
}

TEST(FindingWriter, CountsWarningsAsFaultsOnlyIfItIsStrict)
{
  EXPECT_TRUE(ends_with(status_of(false, {with_line}), "\nFINE"));
  EXPECT_TRUE(ends_with(status_of(true, {with_line}), "\nFAULTS"));
}
