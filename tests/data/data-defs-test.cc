#include "data/data-defs.h"
#include "support/data-set.h"
#include "support/output.h"

#include "data-checks.h"

namespace {

using Texts = std::vector<std::string>;
using Numbers = std::vector<int>;

class DataDefsTest : public testing::Test
{
protected:
  DataDefs& read(const std::string& rows)
  {
    data.file("data-definitions.csv", "group,value,label\n" + rows);
    defs = std::make_unique<DataDefs>(data.dir);
    return *defs;
  }
  Texts labels(const char* group) { return bytes(defs->defs[group].labels); }
  Numbers values(const char* group) { return defs->defs[group].values; }

  DataSet data;
  std::unique_ptr<DataDefs> defs;
};

} // namespace

TEST_F(DataDefsTest, KeepsTheRowsOfAGroupInOrder)
{
  EXPECT_TRUE(read("depth,2,Deep\ndepth,1,Shallow\ncurrent,7,Strong\n").is_valid());
  EXPECT_EQ(Texts({"Deep", "Shallow"}), labels("depth"));
  EXPECT_EQ(Numbers({2, 1}), values("depth"));
  EXPECT_EQ(Texts({"Strong"}), labels("current")) << "the last group of the file";
  EXPECT_EQ(Numbers({7}), values("current"));
}

TEST_F(DataDefsTest, IsEmptyWithHeadingsAlone)
{
  EXPECT_TRUE(read("").is_valid());
  EXPECT_TRUE(defs->defs.empty());
  EXPECT_TRUE(values("depth").empty()) << "a missing group has no choices";
}

TEST_F(DataDefsTest, LetsALaterRunOfAGroupReplaceTheEarlierOne)
{
  read("depth,1,Shallow\ncurrent,1,None\ndepth,2,Deep\n");
  EXPECT_EQ(Texts({"Deep"}), labels("depth"));
  EXPECT_EQ(Texts({"None"}), labels("current"));
}

TEST_F(DataDefsTest, DropsRowsWithoutAGroup)
{
  read(",1,Lost\n,2,Lost too\ndepth,1,Shallow\n,3,Lost again\ncurrent,1,None\n");
  EXPECT_EQ(2U, defs->defs.size());
  EXPECT_EQ(Texts({"Shallow"}), labels("depth"));
  EXPECT_EQ(Texts({"None"}), labels("current"));
}

TEST_F(DataDefsTest, TreatsARowOfZeroAndAnEmptyLabelAsADeclaration)
{
  read("depth,0,\ncurrent,0,\"\"\ncurrent,1,None\nvisibility,0,Zero\nvisibility,5,\n");
  EXPECT_EQ(3U, defs->defs.size());
  EXPECT_EQ(Texts(), labels("depth"));
  EXPECT_EQ(Texts({"None"}), labels("current"));
  EXPECT_EQ(Texts({"Zero", ""}), labels("visibility"));
  EXPECT_EQ(Numbers({0, 5}), values("visibility"));
}

TEST_F(DataDefsTest, ReadsNumbersUpToTheLastDigit)
{
  read("depth, 12ft,a\ndepth,deep,b\ndepth,-3,c\ndepth,,d\n");
  EXPECT_EQ(Numbers({12, 0, -3, 0}), values("depth"));
}

TEST_F(DataDefsTest, IsInvalidWithoutACompleteFile)
{
  EXPECT_FALSE(DataDefs("/no/such/directory/").is_valid());
  data.file("data-definitions.csv", "group,label\n");
  EXPECT_EQ("missing heading \"value\"\n",
            output_of([&] { EXPECT_FALSE(DataDefs(data.dir).is_valid()); }));
  EXPECT_NE("", reported_by([&] { EXPECT_FALSE(read("depth,1\n").is_valid()); }));
}
