#include <gtest/gtest.h>

#include "cli/survey-page.h"

namespace {

ReadableSurvey with_text(const Glib::ustring& text)
{
  ReadableSurvey survey;
  survey.title = text;
  survey.facts = {{"Last name", text}};
  survey.species = {{1, text, text, text, text}};
  survey.complaints = {{"Zone", text}};
  return survey;
}

std::size_t count(const std::string& text, const std::string& part)
{
  std::size_t found = 0;
  for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1))
    ++found;
  return found;
}

} // namespace

TEST(SurveyPage, EscapesEveryText)
{
  const std::string page = survey_page(with_text("<b a=\"1\">&amp;"), "<file>");
  EXPECT_EQ(0U, count(page, "<b "));
  EXPECT_EQ(0U, count(page, "<file>"));
  EXPECT_EQ(8U, count(page, "&lt;b a=&quot;1&quot;&gt;&amp;amp;"));
  EXPECT_EQ(1U, count(page, "&lt;file&gt;"));
}

TEST(SurveyPage, ReplacesCharactersThatHtmlDoesNotAllow)
{
  const Glib::ustring text(std::string("a\0b\x01\x7F\xFF", 6) + "\u0085\uFFFE\uFDD0");
  const std::string page = survey_page(with_text(text), "file");
  for (const char c : {'\0', '\x01', '\x7F', '\xFF'})
    EXPECT_EQ(std::string::npos, page.find(c)) << static_cast<int>(c);
  EXPECT_EQ(std::string::npos, page.find("\u0085"));
  EXPECT_EQ(std::string::npos, page.find("\uFFFE"));
  EXPECT_EQ(std::string::npos, page.find("\uFDD0"));
  EXPECT_TRUE(Glib::ustring(page).validate());
}

TEST(SurveyPage, LoadsNothingAndRunsNothing)
{
  const std::string page = survey_page(with_text("x"), "file");
  EXPECT_EQ(1U, count(page, "content=\"default-src 'none'; style-src 'unsafe-inline'\""));
  for (const char* part : {"<script", "<link", "<img", "<iframe", "url(", "@import", " on"})
    EXPECT_EQ(part == std::string(" on") ? count(page, " one") : 0U, count(page, part)) << part;
}

TEST(SurveyPage, ReportsMissingEntriesOnlyIfThereAreAny)
{
  ReadableSurvey survey = with_text("x");
  EXPECT_EQ(1U, count(survey_page(survey, "file"), "Missing or not right"));
  survey.complaints.clear();
  EXPECT_EQ(0U, count(survey_page(survey, "file"), "Missing or not right"));
}

TEST(FailurePage, ShowsTheReason)
{
  const std::string page = failure_page("a<b", "1 < 2");
  EXPECT_EQ(1U, count(page, "<bdi>a&lt;b</bdi>"));
  EXPECT_EQ(1U, count(page, "<bdi>1 &lt; 2</bdi>"));
}
