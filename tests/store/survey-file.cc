#include "store/survey-file.h"

#include <gtest/gtest.h>

#include <regex>

std::string SurveyFile::text() const
{
  return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<" + root_tag + " version=\"" + version +
         "\">\n  <survey>" + elements + "</survey>\n</" + root_tag + ">\n";
}

SurveyFile SurveyFile::with(const std::string& name, const std::string& element) const
{
  const std::regex old_element("<" + name + "[ >].*</" + name + ">");
  EXPECT_TRUE(std::regex_search(elements, old_element)) << name;
  SurveyFile changed = *this;
  changed.elements = std::regex_replace(elements, old_element, element);
  return changed;
}

SurveyFile SurveyFile::as(const std::string& tag, const std::string& version_text) const
{
  SurveyFile changed = *this;
  changed.root_tag = tag;
  changed.version = version_text;
  return changed;
}
