#include "data/survey-data.h"

#include <gtest/gtest.h>

#include <iterator>
#include <vector>

TEST(IdSet, HasEachIdOnceInAscendingOrder)
{
  IdSet ids{5, 1, 9, 5, 3};
  EXPECT_EQ((std::vector<int>{1, 3, 5, 9}), std::vector<int>(ids.begin(), ids.end()));
  EXPECT_EQ(4U, ids.size());
}

TEST(IdSet, FindsAnIdOrTheEnd)
{
  const IdSet ids{1, 3, 5};
  EXPECT_EQ(1, std::distance(ids.begin(), ids.find(3)));
  EXPECT_EQ(5, *ids.find(5));
  for (const int other : {-1, 0, 2, 4, 6})
    EXPECT_EQ(ids.end(), ids.find(other)) << other;
  EXPECT_EQ(IdSet().end(), IdSet().find(1));
}
