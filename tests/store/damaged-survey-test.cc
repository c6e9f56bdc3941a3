#include "core/my-app.h"
#include "store/saving-test.h"
#include "store/survey-file.h"
#include "store/survey-reader.h"
#include "support/dialogs.h"
#include "support/output.h"
#include "support/sanitizer.h"
#include "ui/survey-window.h"

#include <cstdio>
#include <random>

namespace {

// Damages the text of a survey file in one of many ways. The sequence is the same in every run.
class Damage
{
public:
  std::string spoil(std::string text)
  {
    // Compilers evaluate arguments in different orders, so one statement draws one number.
    std::size_t at = 0;
    std::string piece;
    switch (below(9)) {
    case 0: // flips a bit
      at = place(text);
      text[at] = static_cast<char>(text[at] ^ (1 << below(8)));
      return text;
    case 1: // writes any byte, such as zero or one that is not UTF-8
      at = place(text);
      text[at] = static_cast<char>(below(256));
      return text;
    case 2: // truncates the text
      return text.substr(0, place(text));
    case 3: // removes a piece
      at = place(text);
      return text.erase(at, below(60));
    case 4: // duplicates a piece
      at = place(text);
      piece = text.substr(at, below(200));
      return text.insert(place(text), piece);
    case 5: // nests an element in itself
      return nest(text);
    default:
      return spoil_a_value(text);
    }
  }

  // Replaces one of the values, so that the text is still a document.
  std::string spoil_a_value(std::string text)
  {
    static const char* const values[] = {"",
                                         "-1",
                                         "-2147483648",
                                         "2147483647",
                                         "99999999999999999999",
                                         "-99999999999999999999",
                                         "0",
                                         "99",
                                         "x",
                                         "1e9",
                                         "0x10",
                                         "&#x1F41F;",
                                         "   ",
                                         "\t",
                                         "\n",
                                         "&lt;b&gt;",
                                         "%s%n",
                                         "<!-- x -->",
                                         "<b/>",
                                         "&amp;",
                                         "<![CDATA[9]]>",
                                         "&#xFFFD;",
                                         "PNW",
                                         "FLA"};
    const char* const value = values[below(std::size(values))];
    const std::size_t quotes = text.find("abun=\"");
    if (below(4) == 0 && quotes != std::string::npos) {
      const std::string attribute = below(2) == 0 ? " id=\"" : " abun=\"";
      const std::size_t start = text.find(attribute) + attribute.size();
      const std::string plain = value[0] == '<' ? "" : value;
      return text.replace(start, text.find('"', start) - start, plain);
    }
    const std::size_t start = text.find('>', text.find("<survey>") + 8 + below(900)) + 1;
    return text.replace(start, text.find('<', start) - start, value);
  }

private:
  std::size_t below(std::size_t count) { return random() % count; }
  std::size_t place(const std::string& text) { return below(text.size()); }
  std::string nest(const std::string& text)
  {
    const std::size_t depth = 1 + below(below(2) == 0 ? 4 : 400);
    std::string start;
    std::string end;
    for (std::size_t i = 0; i < depth; ++i) {
      start += "<survey>";
      end += "</survey>";
    }
    std::string nested = text;
    nested.insert(text.find("<survey>"), start);
    return nested.insert(nested.find("</MAVO-Survey>"), end);
  }

  std::mt19937 random{20211218};
};

class DamagedSurvey : public SavingTest
{
public:
  std::string put(const std::string& text) const
  {
    std::string path = path_of(MyApp::WD_IN_PROGRESS, "damaged");
    write_file(path, text);
    return path;
  }

  Damage damage;
};

std::size_t count_of(const std::string& words, const std::string& text)
{
  std::size_t count = 0;
  for (auto at = text.find(words); at != std::string::npos; at = text.find(words, at + 1))
    ++count;
  return count;
}

// What a reader finds in a file.
struct Contents {
  bool is_survey = false;
  bool has_type_before_place = false; // opening such a file ends the program
  std::map<int, int> species;         // abundances by species id
};

Contents contents_of(const std::string& path)
{
  Contents contents;
  try {
    SurveyParser parser;
    const xmlpp::Node* const survey = parse_survey_file(parser, path);
    contents.is_survey = true;
    bool has_place = false;
    for (const auto* child : survey->get_children()) {
      has_place = has_place || child->get_name().raw() == "subregion";
      contents.has_type_before_place |= child->get_name().raw() == "survey_subtype" && !has_place;
      for (const auto* species : child->get_children())
        if (species->get_name().raw() == "species")
          contents.species[get_numeric_attr(species, "id")] = get_numeric_attr(species, "abun");
    }
  } catch (const Glib::ustring&) {
  } catch (const std::exception&) {
  }
  return contents;
}

} // namespace

TEST_F(DamagedSurvey, IsDescribedOrReportedOnce)
{
  const std::string survey = SurveyFile().text();
  constexpr int count = 2000 / case_step;
  int described = 0;
  for (int i = 0; i < count && !HasFailure(); ++i) {
    const std::string text = damage.spoil(survey);
    const std::string path = put(text);
    std::string description;
    const std::string said =
        output_of([&] { description = my_app->get_survey_description(path, nullptr); });
    EXPECT_EQ(description.empty() ? 1U : 0U, count_of("File scan: ", said)) << text << "\n" << said;
    EXPECT_TRUE(Glib::ustring(description).validate()) << text;
    described += description.empty() ? 0 : 1;
  }
  RecordProperty("tried", count);
  EXPECT_LT(count / 20, described);
  EXPECT_GT(count, described);
  std::printf("%d damaged surveys read: %d described, %d reported\n", count, described,
              count - described);
}

TEST_F(DamagedSurvey, OpensWithAllItsSpeciesOrIsRefusedOnce)
{
  const std::string survey = SurveyFile().text();
  constexpr int count = 120 / case_step; // each one needs a window
  int opened = 0;
  bool is_new = true;
  for (int i = 0; i < count && !HasFailure(); ++i) {
    const std::string text = i % 2 == 0 ? damage.spoil_a_value(survey) : damage.spoil(survey);
    const std::string path = put(text);
    SCOPED_TRACE(text);
    const Contents contents = contents_of(path);
    if (contents.has_type_before_place)
      continue;
    if (!is_new)
      create_window();
    is_new = !contents.is_survey; // then the window is still empty

    RetCode result = RET_FAILURE;
    const auto seen = answer_all_dialogs(Gtk::RESPONSE_OK, [&] { result = window->do_open(path); });
    EXPECT_EQ(result == RET_SUCCESS ? 0U : 1U, seen.size());
    if (result != RET_SUCCESS)
      continue;
    ++opened;
    for (const auto& [id, abundance] : contents.species)
      EXPECT_EQ(abundance, window->survey.abundances[id]) << id;
    EXPECT_FALSE(window->file_needs_saving());
  }
  RecordProperty("tried", count);
  EXPECT_LT(case_step == 1 ? 12 : 2, opened);
  std::printf("%d damaged surveys opened: %d with all their species, the others refused once\n",
              count, opened);
}
