// Checks the definition file of the user interface as a text: the widgets that the program looks
// up, and what divers who use the keyboard or a screen reader need.

#include <gtest/gtest.h>
#include <libxml++/libxml++.h>

#include <map>
#include <set>
#include <string>
#include <vector>

namespace {

using Elements = std::vector<const xmlpp::Element*>;

// Returns every element that the XPath expression finds from `node`.
Elements find(const xmlpp::Node* node, const std::string& path)
{
  Elements elements;
  for (const auto* const found : node->find(path))
    if (const auto* const element = dynamic_cast<const xmlpp::Element*>(found))
      elements.push_back(element);
  return elements;
}

std::string text_of(const xmlpp::Element* element)
{
  const auto* const text = element->get_child_text();
  return text ? text->get_content() : "";
}

// Returns the value of an object's property; empty if the file does not have it.
std::string property(const xmlpp::Element* object, const std::string& name)
{
  const Elements found = find(object, "property[@name='" + name + "']");
  return found.empty() ? "" : text_of(found.front());
}

std::string id_of(const xmlpp::Element* object)
{
  return object->get_attribute_value("id");
}

std::string accessible_name(const xmlpp::Element* object)
{
  const Elements found =
      find(object, "child[@internal-child='accessible']/object[@class='AtkObject']/"
                   "property[@name='AtkObject::accessible-name']");
  return found.empty() ? "" : text_of(found.front());
}

// Returns the letter after the underscore of a label, in lower case; 0 if there is none.
char mnemonic(const xmlpp::Element* object)
{
  const std::string label = property(object, "label");
  const auto underscore = label.find('_');
  if (property(object, "use-underline") != "True" || underscore == std::string::npos)
    return 0;
  return static_cast<char>(std::tolower(static_cast<unsigned char>(label.at(underscore + 1))));
}

const std::vector<std::string> panels = {"start_panel",   "member_panel", "survey_panel1",
                                         "survey_panel2", "listed_panel", "unlisted_panel",
                                         "confirm_panel"};

class DefinitionFile : public testing::Test
{
protected:
  void SetUp() override
  {
    parser.parse_file(MAVO_RESOURCES "/survey-ui.glade");
    root = parser.get_document()->get_root_node();
  }

  const xmlpp::Element* object(const std::string& id) const
  {
    const Elements found = find(root, "//object[@id='" + id + "']");
    return found.empty() ? nullptr : found.front();
  }

  // Returns all objects inside the object `id`, including itself.
  Elements objects_of(const std::string& id, const std::string& condition = "") const
  {
    return find(root, "//object[@id='" + id + "']/descendant-or-self::object" + condition);
  }

  void expect_type(const std::string& type, const std::vector<std::string>& ids) const
  {
    for (const auto& id : ids) {
      const Elements found = find(root, "//object[@id='" + id + "']");
      ASSERT_EQ(found.size(), 1U) << id;
      EXPECT_EQ(found.front()->get_attribute_value("class"), type) << id;
    }
  }

  xmlpp::DomParser parser;
  const xmlpp::Element* root = nullptr;
};

} // namespace

TEST_F(DefinitionFile, HasTheWindowAndItsDialogs)
{
  expect_type("GtkWindow", {"survey_window"});
  expect_type("GtkBox", {"survey_window_box"});
  expect_type("GtkNotebook", {"notebook"});
  expect_type("GtkButton",
              {"save_button", "ready_button", "upload_button", "back_button", "next_button"});
  expect_type("GtkAboutDialog", {"about_dialog"});
  expect_type("GtkDialog", {"contact_dialog", "instructions_dialog"});
  expect_type("GtkLabel", {"program_instructions"});
  EXPECT_EQ(property(object("survey_window"), "title"), "MAVO Survey");
  EXPECT_EQ(property(object("survey_window_box"), "orientation"), "vertical");
}

TEST_F(DefinitionFile, LeavesTheWindowHidden)
{
  for (const auto& id : {"survey_window", "about_dialog", "contact_dialog", "instructions_dialog"})
    EXPECT_NE(property(object(id), "visible"), "True") << id;
}

TEST_F(DefinitionFile, HasThePanelsAtItsTopLevel)
{
  expect_type("GtkGrid", panels);
  for (const auto& id : panels)
    EXPECT_EQ(object(id)->get_parent(), root) << id;
}

TEST_F(DefinitionFile, ShowsEverythingInThePanels)
{
  for (const auto& panel : panels) {
    for (const auto* const widget :
         objects_of(panel, "[@class!='AtkObject' and @class!='GtkTreeSelection']"))
      EXPECT_EQ(property(widget, "visible"), "True")
          << panel << ": " << widget->get_attribute_value("class") << " " << id_of(widget);
  }
}

TEST_F(DefinitionFile, HasTheStartPanelsWidgets)
{
  expect_type("GtkTreeView", {"survey_tree"});
  expect_type("GtkButton", {"startp_updates_button", "startp_new_survey_button",
                            "startp_upload_all_button", "startp_edit_view_button",
                            "startp_mark_button", "startp_upload_button", "startp_delete_button"});
}

TEST_F(DefinitionFile, HasTheMemberAndLocationPanelsWidgets)
{
  expect_type("GtkEntry", {"member_id", "last_name", "zonecode", "zone_search"});
  expect_type("GtkComboBoxText",
              {"subregion", "survey_subtype", "month", "mday", "year", "dive_start"});
  expect_type("GtkLabel", {"zone_name_status", "zone_name", "no_geog_matches"});
  expect_type("GtkTreeView", {"geog_tree"});
}

TEST_F(DefinitionFile, HasTheConditionsPanelsWidgets)
{
  expect_type("GtkLabel", {"sp2_instructions", "optional1", "optional2", "label_avg_depth",
                           "label_max_depth", "habitat_descr"});
  expect_type("GtkEntry", {"surface_temp", "bottom_temp", "bottom_time"});
  expect_type("GtkComboBoxText",
              {"temp_units", "visibility", "avg_depth", "max_depth", "current", "habitat"});
}

TEST_F(DefinitionFile, HasTheSpeciesPanelsWidgets)
{
  expect_type("GtkLabel", {"listed_instructions", "unlisted_instructions", "found_species_heading",
                           "no_found_species_heading"});
  expect_type("GtkComboBoxText", {"species_view", "species_search_by"});
  expect_type("GtkRadioButton",
              {"name_display_common", "name_display_scientific", "name_display_both"});
  expect_type("GtkCheckButton", {"spanish_enable"});
  expect_type("GtkButton", {"listed_expand_all_button", "listed_collapse_all_button"});
  expect_type("GtkTreeView", {"species_tree", "selected_species_tree", "found_species_tree"});
  expect_type("GtkBox", {"selected_species_box", "search_box", "found_species_box"});
  expect_type("GtkEntry", {"species_search"});
}

TEST_F(DefinitionFile, HasTheConfirmationPanelsWidgets)
{
  for (const std::string field :
       {"member_id", "last_name", "survey_type", "survey_date", "dive_start", "zone_code",
        "surface_temp", "bottom_temp", "bottom_time", "visibility", "avg_depth", "max_depth",
        "current", "habitat", "total_species"})
    expect_type("GtkLabel", {"conf_label_" + field, "conf_" + field});
  expect_type("GtkLabel", {"confirm_instructions", "conf_zone_name", "conf_listed_species",
                           "conf_unlisted_species"});
  expect_type("GtkCheckButton", {"confirm_bottom_time"});
  expect_type("GtkBox", {"conf_listed_box", "conf_unlisted_box"});
  expect_type("GtkTreeView", {"conf_listed_tree", "conf_unlisted_tree"});
}

TEST_F(DefinitionFile, EnablesMarkupInEveryLabelThatGetsMarkup)
{
  auto labels = objects_of("confirm_panel", "[@class='GtkLabel' and @id]");
  for (const auto& id : {"listed_instructions", "unlisted_instructions", "sp2_instructions",
                         "habitat_descr", "program_instructions"})
    labels.push_back(object(id));
  for (const auto* const label : labels)
    EXPECT_EQ(property(label, "use-markup"), "True") << id_of(label);
}

TEST_F(DefinitionFile, WrapsTheLongTexts)
{
  for (const auto& id : {"listed_instructions", "unlisted_instructions", "sp2_instructions",
                         "habitat_descr", "program_instructions", "confirm_instructions",
                         "zone_name", "conf_zone_name", "no_geog_matches"})
    EXPECT_EQ(property(object(id), "wrap"), "True") << id;
}

TEST_F(DefinitionFile, OffersTheSixWaysToSearchForASpecies)
{
  std::vector<std::string> labels;
  for (const auto* const item : find(object("species_search_by"), "items/item"))
    labels.push_back(text_of(item));
  const std::vector<std::string> expected = {
      "Common Name",  "Scientific Name", "Common + Scientific Names",
      "Spanish Name", "Family Name",     "Species Code"};
  EXPECT_EQ(labels, expected);
}

TEST_F(DefinitionFile, JoinsTheThreeNameButtonsInOneGroup)
{
  EXPECT_EQ(property(object("name_display_common"), "group"), "");
  EXPECT_EQ(property(object("name_display_scientific"), "group"), "name_display_common");
  EXPECT_EQ(property(object("name_display_both"), "group"), "name_display_common");
}

TEST_F(DefinitionFile, SearchesTheNamesOfEveryTree)
{
  std::map<std::string, std::string> columns = {{"survey_tree", "2"}};
  for (const auto* const tree : find(root, "//object[@class='GtkTreeView']")) {
    const auto found = columns.find(id_of(tree));
    EXPECT_EQ(property(tree, "search-column"), found == columns.end() ? "1" : found->second)
        << id_of(tree);
  }
}

TEST_F(DefinitionFile, CaptionsEveryFieldAndTree)
{
  std::set<std::string> captioned;
  for (const auto* const label : find(root, "//object[@class='GtkLabel']"))
    captioned.insert(property(label, "mnemonic-widget"));
  for (const auto* const field :
       find(root, "//object[@class='GtkEntry' or @class='GtkComboBoxText' or "
                  "@class='GtkTreeView']"))
    EXPECT_EQ(captioned.count(id_of(field)), 1U) << id_of(field);
}

TEST_F(DefinitionFile, PointsEveryMnemonicOfACaptionAtAWidget)
{
  for (const auto* const label : find(root, "//object[@class='GtkLabel']")) {
    const std::string target = property(label, "mnemonic-widget");
    const bool underlined = property(label, "use-underline") == "True";
    if (!underlined && target.empty())
      continue;
    EXPECT_EQ(mnemonic(label) != 0, underlined) << property(label, "label");
    EXPECT_NE(object(target), nullptr) << property(label, "label");
  }
}

TEST_F(DefinitionFile, NamesEveryFieldTreeAndButton)
{
  for (const auto* const field :
       find(root, "//object[@class='GtkEntry' or @class='GtkComboBoxText' or "
                  "@class='GtkTreeView' or @class='GtkNotebook']"))
    EXPECT_NE(accessible_name(field), "") << id_of(field);
  for (const auto* const button :
       find(root, "//object[@class='GtkButton' or @class='GtkCheckButton' or "
                  "@class='GtkRadioButton']"))
    EXPECT_NE(property(button, "label"), "") << id_of(button);
}

TEST_F(DefinitionFile, LinksEachCaptionOfTheConfirmationPageToItsValue)
{
  for (const auto* const caption :
       objects_of("confirm_panel", "[starts-with(@id, 'conf_label_')]")) {
    const std::string value = "conf_" + id_of(caption).substr(std::string("conf_label_").size());
    EXPECT_FALSE(
        find(caption, "accessibility/relation[@type='label-for' and @target='" + value + "']")
            .empty())
        << value;
  }
}

// A focusable frame around a tree would be another stop for the Tab key.
TEST_F(DefinitionFile, MakesFramesFocusableOnlyIfTheyScrollText)
{
  for (const auto* const frame : find(root, "//object[@class='GtkScrolledWindow']")) {
    const bool has_tree = !find(frame, "child/object[@class='GtkTreeView']").empty();
    EXPECT_EQ(property(frame, "can-focus"), has_tree ? "False" : "True");
    EXPECT_EQ(accessible_name(frame).empty(), has_tree);
  }
}

// A border width would be black while the page is scrolled. The style sheet sets a padding.
TEST_F(DefinitionFile, LeavesTheMarginOfPaperToTheStyleSheet)
{
  const Elements papers = find(root, "//object[@class='GtkGrid'][style/class[@name='paper']]");
  ASSERT_EQ(papers.size(), 1U);
  EXPECT_EQ(property(papers.front(), "border-width"), "");
}

// The letters of the File and Help menus and of the buttons at the bottom are used on every page.
TEST_F(DefinitionFile, GivesEachMnemonicOfAPageToOneWidget)
{
  std::map<char, std::string> everywhere = {{'f', "File"}, {'h', "Help"}};
  for (const auto* const button : objects_of("survey_window", "[@class='GtkButton']"))
    EXPECT_TRUE(everywhere.emplace(mnemonic(button), id_of(button)).second) << id_of(button);

  for (const auto& panel : panels) {
    auto taken = everywhere;
    for (const auto* const widget : objects_of(panel)) {
      const char letter = mnemonic(widget);
      if (letter == 0)
        continue;
      const auto added = taken.emplace(letter, property(widget, "label"));
      EXPECT_TRUE(added.second) << panel << ": " << property(widget, "label") << " and "
                                << added.first->second;
    }
  }
}

TEST_F(DefinitionFile, ClosesTheDialogsWithTheirButtons)
{
  for (const auto& id : {"contact_dialog", "instructions_dialog"}) {
    const Elements actions = find(object(id), "action-widgets/action-widget");
    ASSERT_EQ(actions.size(), 1U) << id;
    const auto* const button = object(text_of(actions.front()));
    ASSERT_NE(button, nullptr) << id;
    EXPECT_EQ(property(button, "label"), "_Close") << id;
    EXPECT_NE(actions.front()->get_attribute_value("response"), "") << id;
  }
}

TEST_F(DefinitionFile, ExplainsInTheContactDialogHowToReachTheOrganisation)
{
  std::string words;
  for (const auto* const label : objects_of("contact_dialog", "[@class='GtkLabel']"))
    words += property(label, "label") + "\n";
  EXPECT_NE(words.find("mailto:" MAVO_SUPPORT_ADDRESS), std::string::npos);
  EXPECT_NE(words.find("http://" MAVO_WEB_HOST), std::string::npos);
}

TEST_F(DefinitionFile, HasTheProgramsNameAndLogoInTheAboutBox)
{
  const auto* const about = object("about_dialog");
  EXPECT_EQ(property(about, "program-name"), "MAVO Survey");
  EXPECT_EQ(property(about, "logo"), "MAVO-logo-128.png");
  EXPECT_EQ(property(about, "website"), "http://" MAVO_WEB_HOST);
  EXPECT_EQ(property(about, "license").rfind("MIT License", 0), 0U);
}
