#include "store/survey-xml-info.h"

#include <gtest/gtest.h>

TEST(SurveyXMLinfo, WritesVersionOneAndReadsFromZeroPointTwo)
{
  const SurveyXMLinfo format;
  EXPECT_EQ("1.0", format.get_current_version_str());
  EXPECT_EQ("MAVO-Survey", format.root_tag);
  EXPECT_EQ(0, format.oldest_major);
  EXPECT_EQ(2, format.oldest_minor);
}

TEST(SurveyXMLinfo, SeparatesMajorAndMinorByAPoint)
{
  SurveyXMLinfo format;
  format.current_major = 12;
  format.current_minor = 30;
  EXPECT_EQ("12.30", format.get_current_version_str());
}
