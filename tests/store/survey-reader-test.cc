#include "store/survey-reader.h"
#include "support/data-set.h"
#include "support/memory.h"

#include <glibmm/stringutils.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <stdexcept>
#include <string>

namespace {

// Parses a file with that text. Returns the name of the element, or the text that was thrown. The
// text of an exception of the parser starts with "parser: ".
std::string read_survey(const std::string& text, const std::string& name = "a.MAVO-Survey")
{
  const DataSet directory;
  directory.file(name, text);
  SurveyParser parser;
  try {
    return parse_survey_file(parser, directory.dir + name)->get_name().raw();
  } catch (const Glib::ustring& thrown) {
    return thrown.raw();
  } catch (const std::exception& thrown) {
    return std::string("parser: ") + thrown.what();
  }
}

std::string with_version(const std::string& version)
{
  return "<MAVO-Survey version='" + version + "'><survey/></MAVO-Survey>";
}

bool begins_with(const std::string& text, const std::string& start)
{
  return text.compare(0, start.size(), start) == 0;
}

const char* const too_old =
    "Valid saved MAVO Survey, but too old - contact " SUPPORT_ADDRESS " for help";
const char* const too_new =
    "Valid saved MAVO Survey, but you need a newer version of this program to open it";
const char* const bad_version = "Not a valid saved MAVO Survey (bad version)";

// Text nodes, attributes and children of one small document.
class SurveyNodes : public testing::Test
{
public:
  SurveyNodes()
  {
    parser.parse_memory("<r a=' 12x' b='x' e=''>"
                        "<blank> \n\t </blank><empty/><text>words <b/> more</text>"
                        "<late><!--why-->words</late><cdata><![CDATA[words]]></cdata>"
                        "</r>");
    root = parser.get_document()->get_root_node();
  }

  const xmlpp::Node* child(const char* name) const { return root->get_first_child(name); }

  xmlpp::DomParser parser;
  const xmlpp::Element* root = nullptr;
};

} // namespace

TEST_F(SurveyNodes, HaveAttributesOnlyIfTheyAreElements)
{
  EXPECT_EQ(" 12x", get_attr(root, "a"));
  EXPECT_EQ("", get_attr(root, "e"));
  EXPECT_EQ("", get_attr(root, "missing"));
  EXPECT_EQ("", get_attr(child("text")->get_first_child(), "a"));
  EXPECT_EQ("", get_attr(nullptr, "a"));
}

TEST_F(SurveyNodes, ReadNumericAttributesUpToTheLastDigit)
{
  EXPECT_EQ(12, get_numeric_attr(root, "a"));
  EXPECT_EQ(0, get_numeric_attr(root, "b"));
  EXPECT_EQ(0, get_numeric_attr(root, "missing"));
  EXPECT_EQ(0, get_numeric_attr(nullptr, "a"));
}

TEST_F(SurveyNodes, HaveTheTextOfTheirFirstChild)
{
  EXPECT_EQ("words ", get_content(child("text")));
  EXPECT_EQ(" \n\t ", get_content(child("blank")));
  EXPECT_EQ("", get_content(child("empty")));
  EXPECT_EQ("", get_content(child("late"))) << "text after a comment is ignored";
  EXPECT_EQ("", get_content(child("cdata")));
  EXPECT_EQ("", get_content(nullptr));
}

TEST_F(SurveyNodes, AreWhiteSpaceIfTheirTextHasNothingElse)
{
  EXPECT_TRUE(is_white_space(child("blank")->get_first_child()));
  EXPECT_FALSE(is_white_space(child("text")->get_first_child()));
  EXPECT_FALSE(is_white_space(child("blank")));
  EXPECT_FALSE(is_white_space(child("late")->get_first_child()));
  EXPECT_FALSE(is_white_space(nullptr));
}

TEST(ParseSurveyFile, FindsTheSurveyElement)
{
  const std::string latin1 = "<?xml version='1.0' encoding='ISO-8859-1'?>";
  const std::string documents[] = {
      "<MAVO-Survey version='1.0'><survey/></MAVO-Survey>",
      "<?xml version='1.0'?>\n<MAVO-Survey version='1.0'>\n  <survey/>\n \n</MAVO-Survey>\n",
      "<MAVO_Fish_Survey version='1.0'><survey/></MAVO_Fish_Survey>",
      "<!-- before --><MAVO-Survey version='1.0'><survey><a/></survey></MAVO-Survey>",
      latin1 + "<MAVO-Survey version='1.0'><survey>\xfc</survey></MAVO-Survey>",
  };
  for (const auto& document : documents)
    EXPECT_EQ("survey", read_survey(document)) << document;
}

TEST(ParseSurveyFile, AcceptsVersionsFromTheOldestReadableToThisMajorNumber)
{
  const struct {
    const char* version;
    const char* expected;
  } cases[] = {
      {"0.2", "survey"},
      {"0.10", "survey"},
      {"1.0", "survey"},
      {"1.7", "survey"},
      {"1.99999999999", "survey"},
      {" 1. 7x", "survey"},
      {"0.1", too_old},
      {"0.0", too_old},
      {"-1.5", too_old},
      {"0.-3", too_old},
      {"2.0", too_new},
      {"99999999999.0", too_new},
      {"", bad_version},
      {"1", bad_version},
      {"1.", bad_version},
      {"x.1", bad_version},
      {"1,0", bad_version},
      {"1 .0", bad_version},
      {"- 1.0", bad_version},
  };
  for (const auto& c : cases)
    EXPECT_EQ(c.expected, read_survey(with_version(c.version))) << "'" << c.version << "'";
  EXPECT_EQ(bad_version, read_survey("<MAVO-Survey><survey/></MAVO-Survey>"));
}

TEST(ParseSurveyFile, ReportsWhatIsWrongWithADocument)
{
  const struct {
    const char* document;
    const char* expected;
  } cases[] = {
      {"<other version='1.0'><survey/></other>", "Not a valid saved MAVO Survey"},
      {"<mavo-survey version='1.0'><survey/></mavo-survey>", "Not a valid saved MAVO Survey"},
      {"<MAVO-Survey version='1.0'/>", "MAVO Survey missing top level children"},
      {"<MAVO-Survey version='1.0'><survey/><more/></MAVO-Survey>",
       "MAVO Survey has too many top level children (survey, more)"},
      {"<MAVO-Survey version='1.0'><survey/> <!--c--> </MAVO-Survey>",
       "MAVO Survey has too many top level children (survey, comment)"},
      {"<MAVO-Survey version='1.0'>\n<!--c--><survey/></MAVO-Survey>",
       "MAVO Survey has too many top level children (comment, survey)"},
      {"<MAVO-Survey version='1.0'>words<survey/></MAVO-Survey>",
       "MAVO Survey has too many top level children (text, survey)"},
      {"<MAVO-Survey version='1.0'><other/></MAVO-Survey>",
       "MAVO Survey has a problem - missing 'survey' tag"},
      {"<MAVO-Survey version='1.0'>words</MAVO-Survey>",
       "MAVO Survey has a problem - missing 'survey' tag"},
      {"<MAVO-Survey version='1.0'>  \n </MAVO-Survey>",
       "MAVO Survey has a problem - missing 'survey' tag"},
  };
  for (const auto& c : cases)
    EXPECT_EQ(c.expected, read_survey(c.document)) << c.document;
}

TEST(ParseSurveyFile, ThrowsTheParsersExceptionIfTheFileIsNotXml)
{
  const std::string documents[] = {
      "not XML at all",
      "<MAVO-Survey version='1.0'><survey>",
      "<a></b>",
      std::string("\0\0\0\0", 4),
      "<MAVO-Survey version='1.0'><survey>\xff</survey></MAVO-Survey>",
      "<MAVO-Survey version='1.0'><survey>&what;</survey></MAVO-Survey>"};
  for (const auto& document : documents)
    EXPECT_TRUE(begins_with(read_survey(document), "parser: ")) << document;
  EXPECT_EQ("Failed to parse survey", read_survey(""));
}

TEST(ParseSurveyFile, ReportsWhatIsNotASurveyFile)
{
  const DataSet directory;
  const auto refusal = [&](const std::string& name) {
    SurveyParser parser;
    try {
      parse_survey_file(parser, directory.dir + name);
      return std::string("read");
    } catch (const Glib::ustring& thrown) {
      return thrown.raw();
    }
  };
  ASSERT_EQ(0, mkfifo((directory.dir + "pipe").c_str(), 0600));
  ASSERT_EQ(0, symlink("/dev/zero", (directory.dir + "zeros").c_str()));
  ASSERT_EQ(0, symlink("nowhere", (directory.dir + "dangling").c_str()));
  directory.file("large", with_version("1.0") + std::string(5 << 20, ' '));
  const std::string no_such_file = Glib::strerror(ENOENT); // in the language of the locale
  EXPECT_EQ(no_such_file, refusal("missing"));
  EXPECT_EQ(no_such_file, refusal("dangling"));
  EXPECT_EQ("Not a file", refusal(""));
  EXPECT_EQ("Not a file", refusal("pipe")); // opening it would block forever
  EXPECT_EQ("Not a file", refusal("zeros"));
  EXPECT_EQ("Not a valid saved MAVO Survey (too large)", refusal("large"));
}

TEST(ParseSurveyFile, DoesNotReadACompressedFile)
{
  const DataSet directory;
  directory.file("a", with_version("1.0"));
  ASSERT_EQ(0, std::system(("gzip " + directory.dir + "a").c_str()));
  EXPECT_TRUE(begins_with(read_survey(read_file(directory.dir + "a.gz")), "parser: "));
}

TEST(ParseSurveyFile, OpensFilesOfAnyName)
{
  for (const char* name : {"a b.MAVO-Survey", "100%41.MAVO-Survey", "100% a.MAVO-Survey",
                           "a#b?c&d.MAVO-Survey", "Núñez-PNW.MAVO-Survey", "a:b.MAVO-Survey",
                           "In Progress/x%20y.MAVO-Survey", "caf\xe9", "caf\xe9 b%c"})
    EXPECT_EQ("survey", read_survey(with_version("1.0"), name)) << name;
}

TEST(ParseSurveyFile, SubstitutesEntitiesOfTheDocumentItself)
{
  const DataSet directory;
  directory.file("a", "<!DOCTYPE MAVO-Survey [<!ENTITY name 'Smith'>]>"
                      "<MAVO-Survey version='1.0'><survey><last_name>Mr &name; &amp; co"
                      "</last_name></survey></MAVO-Survey>");
  SurveyParser parser;
  const xmlpp::Node* const survey = parse_survey_file(parser, directory.dir + "a");
  EXPECT_EQ("Mr Smith & co", get_content(survey->get_first_child("last_name")));
}

TEST(ParseSurveyFile, RefusesASurveyThatIncludesTextFromAnotherFile)
{
  const DataSet directory;
  directory.file("secret", "secret words");
  const std::string url = "file://" + directory.dir + "secret";
  const std::string documents[] = {
      "<!DOCTYPE MAVO-Survey [<!ENTITY x SYSTEM '" + url +
          "'>]>"
          "<MAVO-Survey version='1.0'><survey><last_name>&x;</last_name></survey></MAVO-Survey>",
      "<!DOCTYPE MAVO-Survey [<!ENTITY x SYSTEM 'secret'>]>"
      "<MAVO-Survey version='1.0'><survey><last_name>&x;</last_name></survey></MAVO-Survey>",
      "<!DOCTYPE MAVO-Survey [<!ENTITY % x SYSTEM '" + url +
          "'> %x;]>"
          "<MAVO-Survey version='1.0'><survey/></MAVO-Survey>",
  };
  for (const auto& document : documents) {
    directory.file("a", document);
    SurveyParser parser;
    EXPECT_THROW(
        {
          try {
            parse_survey_file(parser, directory.dir + "a");
          } catch (const Glib::ustring& thrown) {
            EXPECT_EQ("Survey draws text from other files, which are not read", thrown);
            throw;
          }
        },
        Glib::ustring)
        << document;
    EXPECT_EQ(std::string::npos,
              parser.get_document()->write_to_string().raw().find("secret words"));
  }
}

TEST(ParseSurveyFile, DoesNotReadAnExternalDocumentType)
{
  const DataSet directory;
  directory.file("types.dtd", "<!ENTITY x 'secret words'>");
  directory.file("a", "<!DOCTYPE MAVO-Survey SYSTEM 'types.dtd'>"
                      "<MAVO-Survey version='1.0'><survey/></MAVO-Survey>");
  SurveyParser parser;
  EXPECT_EQ("survey", parse_survey_file(parser, directory.dir + "a")->get_name());
  directory.file("a", "<!DOCTYPE MAVO-Survey SYSTEM 'types.dtd'>"
                      "<MAVO-Survey version='1.0'><survey>&x;</survey></MAVO-Survey>");
  EXPECT_THROW(parse_survey_file(parser, directory.dir + "a"), std::exception);
}

TEST(ParseSurveyFile, RestoresTheLibrarysLoader)
{
  const DataSet directory;
  directory.file("words", "words");
  directory.file("a", "<!DOCTYPE r [<!ENTITY x SYSTEM 'words'>]><r>&x;</r>");
  read_survey(with_version("1.0"));
  xmlpp::DomParser parser;
  parser.set_substitute_entities(true);
  parser.parse_file(directory.dir + "a");
  EXPECT_EQ("words", get_content(parser.get_document()->get_root_node()));
}

TEST(ParseSurveyFile, RefusesAFileThatExceedsALimit)
{
  const auto repeated = [](const std::string& text, int count) {
    std::string all;
    for (int i = 0; i < count; ++i)
      all += text;
    return all;
  };
  const auto attributes = [](int count) {
    std::string all;
    for (int i = 0; i < count; ++i)
      all += " a" + std::to_string(i) + "='>'";
    return all;
  };
  const auto survey = [](const std::string& children, const std::string& type = "") {
    return type + "<MAVO-Survey version='1.0'><survey>" + children + "</survey></MAVO-Survey>";
  };
  std::string defaults = "<!DOCTYPE MAVO-Survey [<!ATTLIST year";
  for (int i = 0; i < 40; ++i)
    defaults += " a" + std::to_string(i) + " CDATA 'x'";
  defaults += ">]>";
  const std::string wide = "<?xml version='1.0' encoding='UTF-7'?>";
  const struct {
    const char* why;
    std::string text;
  } refused[] = {
      {"attributes", survey("<year" + attributes(60'000) + "/>")},
      {"one attribute too many", survey("<year" + attributes(33) + "/>")},
      {"attributes of a species", survey("<ids><species" + attributes(33) + "/></ids>")},
      {"namespaces", survey("<year" + repeated(" xmlns='x'", 33) + "/>")},
      {"attributes by default", survey("<year/>", defaults)},
      {"elements", survey(repeated("<year/>", 20'001))},
      {"species", survey("<ids>" + repeated("<species/>", 20'001) + "</ids>")},
      {"a long text", survey("<year>" + std::string(65'536, 'x') + "</year>")},
      {"line feeds", survey("<year>" + std::string(3'900'000, '\n') + "</year>")},
      {"elements from an entity",
       survey("&x;", "<!DOCTYPE MAVO-Survey [<!ENTITY x '<year/><year/>'>]>")},
      {"a large document with a type",
       survey(std::string(130UL * 1024, ' '), "<!DOCTYPE MAVO-Survey>")},
      {"a large document in a rare encoding", wide + survey(std::string(130UL * 1024, ' '))},
  };
  for (const auto& c : refused)
    EXPECT_EQ("Not a valid saved MAVO Survey (too large)", read_survey(c.text)) << c.why;

  const std::string name = "<last_name>" + repeated("=", 65'535) + "</last_name>";
  const std::string sighting = "\n      <species id='0010' abun='2' resp='302'/>";
  const struct {
    const char* why;
    std::string text;
  } read[] = {
      {"ten thousand species", survey("<ids>" + repeated(sighting, 10'000) + "</ids>")},
      {"the longest texts", survey(repeated(name, 10))},
      {"as many attributes as there may be", survey("<year" + attributes(32) + "/>")},
      {"a comment", survey("<!-- " + repeated("a='b' ", 1000) + "--><year/>")},
      {"Latin letters",
       "<?xml version='1.0' encoding='ISO-8859-15'?>" + survey(std::string(130UL * 1024, ' '))},
  };
  for (const auto& c : read)
    EXPECT_EQ("survey", read_survey(c.text)) << c.why;
}

TEST(ParseSurveyFile, RefusesEntitiesThatGrowWithoutEnd)
{
  std::string laughs = "<!ENTITY l0 'ha ha ha ha ha ha ha ha ha ha '>";
  for (int i = 1; i <= 12; ++i) {
    laughs += "<!ENTITY l" + std::to_string(i) + " '";
    for (int k = 0; k < 10; ++k)
      laughs += "&l" + std::to_string(i - 1) + ";";
    laughs += "'>";
  }
  std::string one_long_entity = "<!ENTITY l12 '" + std::string(10000, 'x') + "'>";
  std::string many_uses; // small enough to be parsed
  for (int i = 0; i < 20000; ++i)
    many_uses += "&l12;";

  const long before = memory_peak_kb();
  EXPECT_TRUE(begins_with(read_survey("<!DOCTYPE MAVO-Survey [" + laughs +
                                      "]><MAVO-Survey version='1.0'><survey>&l12;</survey>"
                                      "</MAVO-Survey>"),
                          "parser: "));
  EXPECT_TRUE(begins_with(read_survey("<!DOCTYPE MAVO-Survey [" + one_long_entity +
                                      "]><MAVO-Survey version='1.0'><survey>" + many_uses +
                                      "</survey></MAVO-Survey>"),
                          "parser: "));
  EXPECT_GT(200L * 1024 + memory_kept_back_kb, memory_peak_kb() - before);
}
