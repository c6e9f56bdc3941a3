#include <gtest/gtest.h>

#include "cli/similar-names.h"

TEST(SimilarNames, AreCorrectedNames)
{
  EXPECT_TRUE(are_similar_names("Malmock Reef", "Malmok Reef"));
  EXPECT_TRUE(are_similar_names("Punta Pelicano", "Punta Pelícano"));
  EXPECT_TRUE(are_similar_names("  BABY beach", "Baby Beach"));
}

TEST(SimilarNames, AreExtendedOrShortenedNames)
{
  EXPECT_TRUE(are_similar_names("Isla San Jorge", "Isla San Jorge (Bird Island)"));
  EXPECT_TRUE(are_similar_names("Reef, Arashi", "Arashi Reef"));
}

TEST(SimilarNames, AreNotNamesOfOtherThings)
{
  EXPECT_FALSE(are_similar_names("Baby Beach", "Boca Catalina"));
  EXPECT_FALSE(are_similar_names("Sand", "Seagrass"));
  EXPECT_FALSE(are_similar_names("Reef", ""));
}

TEST(SimilarNames, HaveTheSameNumbers)
{
  EXPECT_FALSE(are_similar_names("Dive Site 1", "Dive Site 2"));
  EXPECT_FALSE(are_similar_names("Dive Site", "Dive Site 2"));
  EXPECT_TRUE(are_similar_names("Dive Site 1", "Divesite 1"));
}

TEST(SimilarNames, CanHaveAnyBytes)
{
  EXPECT_FALSE(are_similar_names("\xff\xfe", "Baby Beach"));
  EXPECT_TRUE(are_similar_names(std::string(100'000, 'a'), std::string(100'000, 'a') + "b"));
}
