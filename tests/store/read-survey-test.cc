#include "store/read-survey.h"
#include "support/data-set.h"

#include <gtest/gtest.h>

#include <exception>
#include <string>

namespace {

std::string document(const std::string& children)
{
  return "<MAVO-Survey version='1.0'><survey>" + children + "</survey></MAVO-Survey>";
}

Survey read(const std::string& children)
{
  const DataSet directory;
  directory.file("a.MAVO-Survey", document(children));
  return read_survey(directory.dir + "a.MAVO-Survey");
}

SurveyReading elements(const std::string& children)
{
  const DataSet directory;
  directory.file("a.MAVO-Survey", document(children));
  return read_survey_elements(directory.dir + "a.MAVO-Survey");
}

// Returns the text that reading throws, or an empty text if it throws nothing.
std::string fault(const std::string& children)
{
  try {
    read(children);
    return {};
  } catch (const Glib::ustring& thrown) {
    return thrown.raw();
  } catch (const std::exception& thrown) {
    return std::string("parser: ") + thrown.what();
  }
}

// Returns one word for each element: "name=text" for a field, "id=abundance" for a species.
std::string words(const SurveyReading& reading)
{
  std::string all;
  for (const auto& element : reading.elements) {
    all += element.field ? element.field->name + ("=" + element.text.raw()) + " "
                         : std::to_string(element.species.id) + "=" +
                               std::to_string(element.species.abun) + " ";
  }
  return all;
}

std::string words_of_species(const Survey& survey)
{
  std::string all;
  for (const auto& species : survey.species)
    all += std::to_string(species.id) + "/" + std::to_string(species.abun) + "/" +
           std::to_string(species.resp) + " ";
  return all;
}

} // namespace

TEST(ReadSurvey, ReadsEveryFieldFromItsElement)
{
  const Survey survey = read("<member_id>1234</member_id><last_name> N </last_name>\n"
                             "<subregion>PNW</subregion><survey_subtype>3</survey_subtype>"
                             "<year>2021</year><month>06</month><mday>30</mday>"
                             "<dive_start>9</dive_start><zonecode>31020003</zonecode>"
                             "<surface_temp>12.5</surface_temp><bottom_temp>9</bottom_temp>"
                             "<temp_units>C</temp_units>"
                             "<bottom_time confirmed='1'>130</bottom_time>"
                             "<visibility>2</visibility><avg_depth>4</avg_depth>"
                             "<max_depth>5</max_depth><current>1</current><habitat>6</habitat>"
                             "<species_view>7</species_view><ids/>");
  EXPECT_EQ("1234", survey.member_id);
  EXPECT_EQ(" N ", survey.last_name);
  EXPECT_EQ("PNW", survey.subregion);
  EXPECT_EQ(3, survey.survey_subtype);
  EXPECT_EQ("2021", survey.year);
  EXPECT_EQ(6, survey.month);
  EXPECT_EQ(30, survey.mday);
  EXPECT_EQ(9, survey.dive_start);
  EXPECT_EQ("31020003", survey.zonecode);
  EXPECT_EQ("12.5", survey.surface_temp);
  EXPECT_EQ("9", survey.bottom_temp);
  EXPECT_EQ("C", survey.temp_units);
  EXPECT_EQ("130", survey.bottom_time);
  EXPECT_TRUE(survey.bottom_time_confirmed);
  EXPECT_EQ(2, survey.visibility);
  EXPECT_EQ(4, survey.avg_depth);
  EXPECT_EQ(5, survey.max_depth);
  EXPECT_EQ(1, survey.current);
  EXPECT_EQ(6, survey.habitat);
  EXPECT_EQ(7, survey.species_view);
}

TEST(ReadSurvey, KeepsTheValueOfANewSurveyForAMissingElement)
{
  const Survey survey = read("");
  const Survey fresh;
  for (const SurveyField& field : survey_fields())
    EXPECT_EQ(field_text(field, fresh).raw(), field_text(field, survey).raw()) << field.name;
  EXPECT_FALSE(survey.bottom_time_confirmed);
  EXPECT_TRUE(survey.species.empty());
}

TEST(ReadSurvey, UsesTheLastOfDuplicateElements)
{
  const Survey survey = read("<year>2020</year><bottom_time confirmed='1'>5</bottom_time>"
                             "<year>2021</year><bottom_time>6</bottom_time>");
  EXPECT_EQ("2021", survey.year);
  EXPECT_EQ("6", survey.bottom_time);
  EXPECT_FALSE(survey.bottom_time_confirmed);
}

TEST(ReadSurvey, ListsTheSpeciesByIdWithTheLastAbundanceOfEach)
{
  EXPECT_EQ("10/0/0 21/2/302 300/1/0 ",
            words_of_species(read("<ids> <species id='0300' abun='1'/>"
                                  "<species id='21' abun='1' resp='301'/></ids>"
                                  "<ids><species id='0010' abun='0'/>"
                                  "<species id='21' abun='2' resp='302'/></ids>")));
}

TEST(ReadSurvey, TreatsAnyUnitExceptCelsiusAsFahrenheit)
{
  for (const char* unit : {"F", "K", "c", "", "Celsius"})
    EXPECT_EQ("F", read("<temp_units>" + std::string(unit) + "</temp_units>").temp_units) << unit;
  EXPECT_EQ("C", read("<temp_units>C</temp_units>").temp_units);
}

TEST(ReadSurvey, ReadsTheSingleDepthOfAnOlderSurveyByItsLocation)
{
  const struct {
    const char* why;
    const char* children;
    int average;
    int maximum;
  } cases[] = {
      {"the maximum", "<subregion>PNW</subregion><depth>3</depth>", -1, 3},
      {"also the maximum", "<subregion>CAL</subregion><depth>3</depth>", -1, 3},
      {"the average", "<subregion>TWA</subregion><depth>3</depth>", 3, -1},
      {"no location yet", "<depth>3</depth><subregion>PNW</subregion>", 3, -1},
      {"the average is cleared",
       "<subregion>PNW</subregion><avg_depth>1</avg_depth><depth>3</depth>", -1, 3},
      {"the last location counts",
       "<subregion>PNW</subregion><subregion>TWA</subregion><depth>3</depth>", 3, -1},
  };
  for (const auto& c : cases) {
    const Survey survey = read(c.children);
    EXPECT_EQ(c.average, survey.avg_depth) << c.why;
    EXPECT_EQ(c.maximum, survey.max_depth) << c.why;
  }
}

TEST(ReadSurvey, ReportsTheFirstWrongElement)
{
  const struct {
    const char* children;
    const char* expected;
  } cases[] = {
      {"<year>2021</year><sunshine/>", "MAVO Survey has unknown tag 'sunshine'"},
      {"<!--c--><other/>", "MAVO Survey has unknown tag 'comment'"},
      {"words", "MAVO Survey has unknown tag 'text'"},
      {"<subregion/><other/>", "MAVO Survey names no location"},
      {"<ids><species id='1' abun='1'/></ids><subregion>PNW</subregion>",
       "MAVO Survey has species in front of its location"},
      {"<ids><fish/></ids>", "MAVO Survey has a problem - unknown tag \"fish\" in ids section"},
      {"<ids><species id='0' abun='1'/></ids>",
       "MAVO Survey has invalid id (0) or abundance (1) for species"},
      {"<ids><species id='4294967306' abun='1'/></ids>",
       "MAVO Survey has invalid id (2147483647) or abundance (1) for species"},
      {"<ids><species id='1' abun='x'/></ids><subregion/>",
       "MAVO Survey has invalid id (1) or abundance (0) for species"},
      {"<ids><species id='1' abun='00'/></ids>",
       "MAVO Survey has invalid id (1) or abundance (0) for species"},
      {"<ids><species id='1' abun='0'/></ids>", ""},
  };
  for (const auto& c : cases)
    EXPECT_EQ(c.expected, fault(c.children)) << c.children;
}

TEST(ReadSurvey, ReportsAFileThatIsNotASurvey)
{
  const DataSet directory;
  directory.file("a", "<other/>");
  EXPECT_THROW(read_survey(directory.dir + "a"), Glib::ustring);
  EXPECT_THROW(read_survey(directory.dir + "missing"), Glib::ustring);
}

TEST(ReadSurveyElements, KeepTheOrderOfTheDocumentUpToTheFirstFault)
{
  const SurveyReading all = elements("<year>2021</year> <ids><species id='7' abun='2'/>"
                                     "<species id='3' abun='0'/></ids>\n<year>x</year>");
  EXPECT_EQ("year=2021 7=2 3=0 year=x ", words(all));
  EXPECT_EQ("", all.fault);

  const SurveyReading part =
      elements("<subregion/><ids><species id='7' abun='2'/><species id='3' abun='-1'/>"
               "<species id='8' abun='1'/></ids><year>2021</year>");
  EXPECT_EQ("subregion= 7=2 ", words(part));
  EXPECT_EQ("MAVO Survey has invalid id (3) or abundance (-1) for species", part.fault);
}
