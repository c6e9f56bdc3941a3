#include "ui/name-match.h"

#include <gtest/gtest.h>

TEST(NameMatch, DistinguishesTheStartOfANameFromTheStartOfALaterWord)
{
  const std::string name = folded_name("Longfin Sculpin (Jordania zonope)");
  EXPECT_EQ(MATCHES_START, match_name(name, "long"));
  EXPECT_EQ(MATCHES_START, match_name(name, "longfin sc"));
  EXPECT_EQ(MATCHES_WORD, match_name(name, "scul"));
  EXPECT_EQ(MATCHES_WORD, match_name(name, "jordania"));
  EXPECT_EQ(MATCHES_WORD, match_name(name, "sculpin (jor"));
  EXPECT_EQ(MATCHES_NOT, match_name(name, "ongfin"));
  EXPECT_EQ(MATCHES_NOT, match_name(name, "longfin sculpin (jordania zonopex"));
}

TEST(NameMatch, FindsAWordAfterTheMiddleOfAnother)
{
  EXPECT_EQ(MATCHES_WORD, match_name("plaice ice fish", "ice"));
  EXPECT_EQ(MATCHES_WORD, match_name("c-o sole", "o"));
}

TEST(NameMatch, IgnoresCaseAndAccents)
{
  EXPECT_EQ(MATCHES_WORD, match_name(folded_name("Pez ÁNGEL"), folded_name("ángel")));
  EXPECT_EQ(MATCHES_WORD, match_name(folded_name("Pez Ángel"), folded_name("ANGEL")));
  EXPECT_EQ(MATCHES_NOT, match_name(folded_name("Pez Ángel"), folded_name("ngel")));
  EXPECT_EQ(MATCHES_NOT, match_name(folded_name("Señorita"), folded_name("orita")));
}

TEST(NameMatch, FindsNothingForAnEmptyText)
{
  EXPECT_EQ(MATCHES_NOT, match_name("grunt", ""));
  EXPECT_EQ(MATCHES_NOT, match_name("", "g"));
}
