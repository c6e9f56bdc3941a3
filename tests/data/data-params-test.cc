#include "data/data-params.h"
#include "support/data-set.h"
#include "support/output.h"

#include "data-checks.h"

namespace {

class DataParamsTest : public testing::Test
{
protected:
  DataParams& read(const std::string& rows)
  {
    data.file("data-parameters.csv", "parameter,value\n" + rows);
    params = std::make_unique<DataParams>(data.dir);
    return *params;
  }

  DataSet data;
  std::unique_ptr<DataParams> params;
};

} // namespace

TEST_F(DataParamsTest, HasNumbersByName)
{
  EXPECT_TRUE(read("temp_min_c,-2\ntemp_max_f,97\n").is_valid());
  EXPECT_EQ(-2, params->params["temp_min_c"]);
  EXPECT_EQ(97, params->params["temp_max_f"]);
}

TEST_F(DataParamsTest, KeepsTheLastRowOfAName)
{
  read("temp_min_c,-2\ntemp_min_c,5\n");
  EXPECT_EQ(5, params->params["temp_min_c"]);
}

TEST_F(DataParamsTest, ReturnsZeroForAMissingLimit)
{
  EXPECT_TRUE(read("").is_valid());
  EXPECT_EQ(0, params->params["temp_max_c"]);
}

TEST_F(DataParamsTest, ReadsAValueThatIsNotANumberAsZero)
{
  read("temp_min_c,cold\ntemp_max_c,\nbottom_time_confirm_over, 120 min\n");
  EXPECT_EQ(0, params->params["temp_min_c"]);
  EXPECT_EQ(0, params->params["temp_max_c"]);
  EXPECT_EQ(120, params->params["bottom_time_confirm_over"]);
}

TEST_F(DataParamsTest, ReportsAValueBeyondTheRange)
{
  EXPECT_EQ(data.dir + "data-parameters.csv line 2: value -99999999999 does not fit and is kept as "
                       "-2147483648\n",
            output_of(-1, [this] { read("temp_min_c,-99999999999\ntemp_max_c,40\n"); }));
  EXPECT_EQ("", output_of(-2, [this] { read("temp_min_c,-99999999999\n"); }));
}

TEST_F(DataParamsTest, IsInvalidWithoutACompleteFile)
{
  EXPECT_FALSE(DataParams("/no/such/directory/").is_valid());
  data.file("data-parameters.csv", "value\n");
  EXPECT_EQ("missing heading \"parameter\"\n",
            output_of([&] { EXPECT_FALSE(DataParams(data.dir).is_valid()); }));
  EXPECT_NE("", reported_by([&] { EXPECT_FALSE(read("temp_min_c\n").is_valid()); }));
}
