#include "data/abundance-choices.h"
#include "support/data-set.h"
#include "support/output.h"

#include <memory>

#include "data-checks.h"

namespace {

using Texts = std::vector<std::string>;

class AbundanceChoicesTest : public testing::Test
{
protected:
  // Reads these rows and returns what was printed.
  std::string read(const std::string& rows)
  {
    data.file("abundance-choices.csv", "responseid,survey_subtype_id,label,abun\n" + rows);
    return output_of([this] { abundances = std::make_unique<AbundanceChoices>(data.dir); });
  }
  // Returns "abun label responseid" of each choice of a survey type.
  Texts choices(std::size_t subtype) const
  {
    Texts result;
    for (const auto& choice : abundances->subtypes.at(subtype).choices)
      result.push_back(std::to_string(choice.abun) + " " + choice.label.raw() + " " +
                       std::to_string(choice.responseid));
    return result;
  }

  DataSet data;
  std::unique_ptr<AbundanceChoices> abundances;
};

} // namespace

TEST_F(AbundanceChoicesTest, BeginEachListWithNone)
{
  EXPECT_EQ("", read("11,1,Single,1\n12,1,Few,2\n31,3,Seen,1\n"));
  EXPECT_TRUE(abundances->is_valid());
  ASSERT_EQ(4U, abundances->subtypes.size());
  EXPECT_EQ(Texts({"0 None -1", "1 Single 11", "2 Few 12"}), choices(1));
  EXPECT_EQ(Texts({"0 None -1", "1 Seen 31"}), choices(3));
  EXPECT_EQ(Texts(), choices(0)) << "a type without rows has no choices, not even None";
  EXPECT_EQ(Texts(), choices(2));
}

TEST_F(AbundanceChoicesTest, FillSkippedClasses)
{
  read("11,1,Single,1\n12,1,Few,2\n14,1,Many,4\n23,2,Only,3\n");
  EXPECT_EQ(Texts({"0 None -1", "1 Single 11", "2 Few 12", "0 Oops -1", "4 Many 14"}), choices(1));
  EXPECT_EQ(Texts({"0 None -1", "0 Oops -1", "0 Oops -1", "3 Only 23"}), choices(2));
}

TEST_F(AbundanceChoicesTest, AppendARowWhoseClassAlreadyHasOne)
{
  read("12,1,Few,2\n11,1,Single,1\n20,1,Zero,0\n21,1,Negative,-3\n");
  EXPECT_EQ(
      Texts({"0 None -1", "0 Oops -1", "2 Few 12", "1 Single 11", "0 Zero 20", "-3 Negative 21"}),
      choices(1));
}

TEST_F(AbundanceChoicesTest, KeepNumbersInSixteenBits)
{
  read("65537,1,Wrapped,65538\n40000,1,Negative,40000\n");
  EXPECT_EQ(Texts({"0 None -1", "0 Oops -1", "2 Wrapped 1", "-25536 Negative -25536"}), choices(1));
}

TEST_F(AbundanceChoicesTest, ReportNumbersThatDoNotFitSixteenBits)
{
  const std::string file = data.dir + "abundance-choices.csv";
  {
    const TraceLevel level(-1);
    EXPECT_EQ(file + " line 3: responseid 32768 does not fit and is kept as -32768\n" + file +
                  " line 4: abun 65539 does not fit and is kept as 3\n",
              read("32767,1,Few,1\n32768,1,Many,2\n7,1,Most,65539\n"));
  }
  const TraceLevel level(-2);
  EXPECT_EQ("", read("32768,1,Many,1\n"));
}

TEST_F(AbundanceChoicesTest, CallTheFirstClassOfThePresenceListPresent)
{
  read("990,99,There,1\n991,99,Perhaps,2\n992,99,Not looked for,9\n");
  EXPECT_EQ(Texts({"0 None -1", "1 Present 990", "2 Perhaps 991"}), choices(99));
  read("990,98,There,1\n");
  EXPECT_EQ(Texts({"0 None -1", "1 There 990"}), choices(98));
}

TEST_F(AbundanceChoicesTest, DropTheNinthClassOfThePresenceList)
{
  read("992,99,Not looked for,9\n");
  EXPECT_TRUE(abundances->is_valid());
  EXPECT_TRUE(abundances->subtypes.empty());
  EXPECT_EQ(nullptr, abundances->find_subtype(AbundanceChoices::presence_subtype));
  read("992,98,Not looked for,9\n");
  EXPECT_EQ(10U, choices(98).size());
}

TEST_F(AbundanceChoicesTest, AreFoundByTheirSurveyType)
{
  read("11,1,Single,1\n");
  EXPECT_EQ(&abundances->subtypes[1], abundances->find_subtype(1));
  EXPECT_EQ(&abundances->subtypes[0], abundances->find_subtype(0));
  for (const int id : {-1, 2, 99, 2'147'483'647, -2'147'483'647 - 1})
    EXPECT_EQ(nullptr, abundances->find_subtype(id)) << id;
}

TEST_F(AbundanceChoicesTest, SkipSurveyTypesThatCannotIndexATable)
{
  const std::string out = read("11,-1,Bad,1\n11,100000,Bad,1\n11,1,Single,1\n");
  EXPECT_TRUE(abundances->is_valid());
  EXPECT_EQ(2U, abundances->subtypes.size());
  EXPECT_EQ(2U, choices(1).size());
  EXPECT_NE(std::string::npos, out.find("survey_subtype_id -1 ")) << out;
  EXPECT_NE(std::string::npos, out.find("survey_subtype_id 100000 ")) << out;
}

TEST_F(AbundanceChoicesTest, LimitTheNumberOfFillers)
{
  std::string rows;
  for (int type = 0; type < 40; ++type)
    rows += "1," + std::to_string(type) + ",Far,32767\n";
  const std::string out = read(rows + "1,50,Near,1\n");
  EXPECT_TRUE(abundances->is_valid());
  EXPECT_EQ(32'768U, choices(0).size());
  EXPECT_EQ(1U, choices(39).size());
  EXPECT_EQ(2U, choices(50).size()) << "the later rows are read";
  EXPECT_NE(std::string::npos, out.find("line 41 is skipped")) << out;
}

TEST_F(AbundanceChoicesTest, AreListedAtLevelThirty)
{
  const TraceLevel level(30);
  EXPECT_EQ("AbundanceChoices:\n"
            "    0:\n"
            "    1:\n"
            "        0: None = -1\n"
            "        1: Single = 11\n"
            "end of AbundanceChoices\n",
            read("11,1,Single,1\n"));
}

TEST_F(AbundanceChoicesTest, AreInvalidWithoutACompleteFile)
{
  EXPECT_EQ("Failed to open " + data.dir + "abundance-choices.csv!\n",
            output_of([&] { EXPECT_FALSE(AbundanceChoices(data.dir).is_valid()); }));
  data.file("abundance-choices.csv", "responseid,label\n");
  EXPECT_EQ("missing heading \"survey_subtype_id\"\nmissing heading \"abun\"\n",
            output_of([&] { EXPECT_FALSE(AbundanceChoices(data.dir).is_valid()); }));
  EXPECT_NE("", reported_by([this] { read("1,2,3\n"); }));
  EXPECT_FALSE(abundances->is_valid());
  EXPECT_EQ("", read(""));
  EXPECT_TRUE(abundances->is_valid());
}
