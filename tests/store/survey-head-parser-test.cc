#include "store/survey-head-parser.h"
#include "store/survey-reader.h"
#include "support/data-set.h"

#include <gtest/gtest.h>

#include <string>

namespace {

std::string with_ids(const std::string& ids)
{
  return "<MAVO-Survey version='1.0'><survey><subregion>PNW</subregion>\n<ids>" + ids +
         "</ids>\n<year>2021</year></survey></MAVO-Survey>";
}

// Parses a survey with that text. Returns the names and texts of its fields, or the text of the
// exception.
template<typename Parser>
std::string outcome(const std::string& text)
{
  const DataSet directory;
  directory.file("a", text);
  Parser parser;
  try {
    std::string fields;
    for (const auto* node : parse_survey_file(parser, directory.dir + "a")->get_children())
      if (!is_white_space(node) && node->get_name().raw() != "ids")
        fields += node->get_name().raw() + "=" + get_content(node).raw() + ";";
    return fields;
  } catch (const Glib::ustring& thrown) {
    return thrown.raw();
  } catch (const std::exception& thrown) {
    return std::string("parser: ") + thrown.what();
  }
}

} // namespace

TEST(SurveyHeadParser, OmitsTheSpeciesFromTheTree)
{
  const DataSet directory;
  directory.file("a", with_ids("\n<species id='1'><sub/>words</species>\n<species id='2'/>\n"));
  SurveyHeadParser parser;
  const xmlpp::Node* const survey = parse_survey_file(parser, directory.dir + "a");
  const auto ids = survey->get_children("ids");
  ASSERT_EQ(1U, ids.size());
  EXPECT_TRUE(ids.front()->get_children().empty());
  EXPECT_EQ("PNW", get_content(survey->get_first_child("subregion")));
  EXPECT_EQ("2021", get_content(survey->get_first_child("year")));
}

TEST(SurveyHeadParser, OmitsNothingElse)
{
  const auto document = [](const std::string& content) {
    return "<MAVO-Survey version='1.0'>" + content + "</MAVO-Survey>";
  };
  const std::string texts[] = {
      document("<survey><year>2021<!--why--></year><ids/><month> 6 &amp; 7</month>"
               "<ids><species/></ids><x><ids>words</ids></x></survey>"),
      document("<survey><id><species/></id><year>2021</year></survey>"),
      "<!DOCTYPE MAVO-Survey [<!ENTITY place 'PNW'>]>" +
          document("<survey><ids>&place;</ids><subregion>&place;</subregion></survey>"),
      document("<ids/>"),
      "<ids><survey><ids/></survey></ids>",
  };
  for (const auto& text : texts)
    EXPECT_EQ(outcome<SurveyParser>(text), outcome<SurveyHeadParser>(text)) << text;
}

TEST(SurveyHeadParser, ReportsEveryFaultAmongTheSpecies)
{
  for (const char* fault : {"<species>",
                            "</species>",
                            "<a><b></a></b>",
                            "<a a='1' a='2'/>",
                            "<a b='<'/>",
                            "<a b=c/>",
                            "&unknown;",
                            "<a b='&unknown;'/>",
                            "]]>",
                            "\x01",
                            "caf\xe9",
                            "<!-- -- -->",
                            "<?xml a?>",
                            "<?a:b c?>",
                            "<x:species/>",
                            "<a x:b='c'/>",
                            "<a xmlns='place'/>",
                            "<a xmlns:x=''/>",
                            "<a xmlns:x='b c'/>",
                            "<a xmlns:xml='place'/>",
                            "<a xml:space='wide'/>",
                            "<a xml:id='1 2'/>",
                            "<a xml:id='b'/><c><d xml:id='b'/></c>"}) {
    const std::string expected = outcome<SurveyParser>(with_ids(fault));
    EXPECT_EQ(0U, expected.find("parser: ")) << fault << ": " << expected;
    EXPECT_EQ(expected, outcome<SurveyHeadParser>(with_ids(fault))) << fault;
  }
}

TEST(SurveyHeadParser, AcceptsEveryValidSurvey)
{
  for (const char* valid :
       {"", "words", "<![CDATA[<]]>", "<!--why-->", "<?why not?>", "<a><b><c/></b></a>",
        "<a xmlns:x='urn:x'><x:b x:c='d'/></a>", "<a xml:lang='en'/>", "<a xml:id='b'/>",
        "<ids><ids/></ids>", "<a xmlns:x='urn:x' x:b='c' xml:id='d'>&#65;</a>"}) {
    EXPECT_EQ("subregion=PNW;year=2021;", outcome<SurveyParser>(with_ids(valid))) << valid;
    EXPECT_EQ("subregion=PNW;year=2021;", outcome<SurveyHeadParser>(with_ids(valid))) << valid;
  }
}
