// Tests what the chief header of the folder includes.

#include "ui/survey-ui.h"

#include <gtest/gtest.h>
#include <libxml++/parsers/domparser.h>

#include <type_traits>

static_assert(PRESENCE_MENU_INDEX == 99);
static_assert(std::is_same_v<decltype(SurveyData::abundance_choices),
                             AbundanceChoices::SurveySubtypeChoiceInfo*>);

TEST(SurveyUiHeader, IncludesTheHelpersOnNodes)
{
  xmlpp::DomParser parser;
  parser.parse_memory("<a n=\"7\">words</a>");
  const xmlpp::Node* const node = parser.get_document()->get_root_node();
  EXPECT_EQ("7", get_attr(node, "n"));
  EXPECT_EQ(7, get_numeric_attr(node, "n"));
  EXPECT_EQ("words", get_content(node));
  EXPECT_FALSE(is_white_space(node));
}
