#include "core/my-app.h"
#include "data/region-fish-info.h"
#include "support/dialogs.h"
#include "support/keys.h"
#include "support/main-loop.h"
#include "support/output.h"
#include "ui/listed-panel.h"
#include "ui/species-window.h"
#include "ui/survey-window.h"

#include <gtkmm/dialog.h>

namespace {

constexpr int lingcod = 11;        // in the view
constexpr int kelp_greenling = 12; // not in the view
constexpr int mottled_star = 21;   // only its presence is recorded

class AbundanceMenuTest : public SpeciesWindowTest
{
public:
  using Abundances = std::map<int, int>;

  void open_with_invertebrates()
  {
    open_survey("Northwest", "Northwest: fish and invertebrates");
    choose(*window->listed_panel->species_view, "With invertebrates");
  }
  // Opens the menu of a species, closes it and returns it.
  Gtk::Menu* menu_for(int id) const
  {
    window->popup_abundance_menu(id, 0, GDK_CURRENT_TIME);
    EXPECT_EQ(id, window->abundance_target);
    return close_open_menu();
  }
};

} // namespace

TEST_F(AbundanceMenuTest, ExistsForEachListAndIsNullForAnEmptyOne)
{
  create_window();
  const auto& menus = window->abundance_menus;
  ASSERT_EQ(100u, menus.size());
  EXPECT_EQ(nullptr, menus[0]);
  EXPECT_EQ(nullptr, menus[98]);
  EXPECT_EQ("None|Single (1)|Few (2-10)|Many (11-100)", item_labels(*menus[1]));
  EXPECT_EQ("None|Seen", item_labels(*menus[2]));
  EXPECT_EQ("None|Present", item_labels(*menus[99]));
  EXPECT_EQ(nullptr, window->current_abundance_menu);
  EXPECT_EQ(window, menus[1]->get_attach_widget());
}

TEST_F(AbundanceMenuTest, ShowsLabelsLiterally)
{
  application_dir.file("abundance-choices.csv", "responseid,survey_subtype_id,label,abun\n"
                                                "101,1,_One & <only>,1\n103,1,Three,3\n");
  open_northwest();
  EXPECT_EQ("None|_One & <only>|Oops|Three", item_labels(*window->abundance_menus[1]));
  auto* item = dynamic_cast<Gtk::MenuItem*>(window->abundance_menus[1]->get_children()[1]);
  ASSERT_NE(nullptr, item);
  EXPECT_FALSE(item->get_use_underline());
  EXPECT_TRUE(item->get_visible());
}

TEST_F(AbundanceMenuTest, IsTracedItemByItem)
{
  application_dir.file("abundance-choices.csv",
                       "responseid,survey_subtype_id,label,abun\n101,2,Seen,1\n");
  create_window();
  const auto build = [&] { window->build_abundance_menus(); };
  EXPECT_EQ("", output_of(29, build));
  EXPECT_EQ("For 2, adding 0 None\nFor 2, adding 1 Seen\n", output_of(30, build));
}

TEST_F(AbundanceMenuTest, OmitsAndReportsANegativeAbundance)
{
  application_dir.file("abundance-choices.csv",
                       "responseid,survey_subtype_id,label,abun\n100,2,Minus,-1\n101,2,Seen,2\n");
  create_window();
  EXPECT_EQ("None|Seen", item_labels(*window->abundance_menus[2]));
  EXPECT_EQ("Warning: survey type 2 offers no \"Minus\": its abundance -1 is negative\n",
            output_of(-1, [&] { window->build_abundance_menus(); }));
  EXPECT_EQ("", output_of(-2, [&] { window->build_abundance_menus(); }));
}

TEST_F(AbundanceMenuTest, WritesTheChosenAbundanceIntoTheSurveyAndBothStores)
{
  open_northwest();
  window->popup_abundance_menu(lingcod, 0, GDK_CURRENT_TIME);
  choose_item(*window->current_abundance_menu, "Few (2-10)");

  EXPECT_EQ((Abundances{{lingcod, 2}}), window->survey.abundances);
  EXPECT_EQ("Sculpins:*\n  10 Longfin Sculpin = None*\n"
            "Greenlings:*\n  11 Lingcod = Few (2-10)*\n",
            listed_rows());
  EXPECT_EQ("Greenlings:*\n  12 Kelp Greenling = None\n  11 Lingcod = Few (2-10)*\n"
            "Sculpins:*\n  10 Longfin Sculpin = None*\n",
            unlisted_rows());
}

TEST_F(AbundanceMenuTest, MarksASpeciesThatTheViewLacks)
{
  open_northwest();
  mark(kelp_greenling, 3);
  EXPECT_EQ((Abundances{{kelp_greenling, 3}}), window->survey.abundances);
  EXPECT_EQ("Sculpins:*\n  10 Longfin Sculpin = None*\nGreenlings:*\n  11 Lingcod = None*\n",
            listed_rows());
  EXPECT_EQ("Greenlings:*\n  12 Kelp Greenling = Many (11-100)\n  11 Lingcod = None*\n"
            "Sculpins:*\n  10 Longfin Sculpin = None*\n",
            unlisted_rows());
}

TEST_F(AbundanceMenuTest, StoresZeroForASpeciesThatIsSetToNone)
{
  open_northwest();
  mark(lingcod, 2);
  window->popup_abundance_menu(lingcod, 0, GDK_CURRENT_TIME);
  choose_item(*window->current_abundance_menu, "None");
  EXPECT_EQ((Abundances{{lingcod, 0}}), window->survey.abundances);
  EXPECT_EQ("Sculpins:*\n  10 Longfin Sculpin = None*\nGreenlings:*\n  11 Lingcod = None*\n",
            listed_rows());
}

TEST_F(AbundanceMenuTest, TracesAMark)
{
  open_northwest();
  EXPECT_EQ("", output_of(0, [&] { mark(lingcod, 2); }));
  EXPECT_EQ("search found 0\nabun_menu: species id 11 abundance = 3\n",
            output_of(1, [&] { mark(lingcod, 3); }));
}

TEST_F(AbundanceMenuTest, RefusesToMarkWithoutASpecies)
{
  open_northwest();
  for (const int target : {0, -1}) {
    const auto seen = answer_next_dialog(Gtk::RESPONSE_OK, [&] { mark(target, 2); });
    EXPECT_EQ("**** Invalid ab chg target!!  abun=2 species id " + std::to_string(target) + "\n",
              seen.text);
  }
  EXPECT_TRUE(window->survey.abundances.empty());
}

TEST_F(AbundanceMenuTest, ShowsSpeciesZeroButCannotMarkIt)
{
  application_dir.file("PAC-species-info.csv",
                       "speciesid,scientificname,commonname,familyid,invertebratetype,rarefishind\n"
                       "0,Nemo,Nobody,F1,0,0\n");
  application_dir.file("species-views.csv", "viewid,speciesid,familyid\n1,0,F1\n");
  open_northwest();
  EXPECT_EQ("Sculpins:*\n  0 Nobody = None*\n", listed_rows());

  window->popup_abundance_menu(0, 0, GDK_CURRENT_TIME);
  answer_next_dialog(Gtk::RESPONSE_OK,
                     [&] { choose_item(*window->current_abundance_menu, "Single (1)"); });
  EXPECT_TRUE(window->survey.abundances.empty());
  EXPECT_EQ("Sculpins:*\n  0 Nobody = None*\n", listed_rows());
}

TEST_F(AbundanceMenuTest, RefreshesOnlyTheFirstRowOfASpeciesListedTwice)
{
  application_dir.file("species-views.csv", "viewid,speciesid,familyid\n1,11,F1\n1,11,F2\n");
  open_northwest();
  mark(lingcod, 1);
  EXPECT_EQ("Sculpins:*\n  11 Lingcod = Single (1)*\nGreenlings:*\n  11 Lingcod = None*\n",
            listed_rows());

  window->listed_panel->update_for_view();
  EXPECT_EQ("Sculpins:*\n  11 Lingcod = Single (1)*\nGreenlings:*\n  11 Lingcod = Single (1)*\n",
            listed_rows());
}

TEST_F(AbundanceMenuTest, RefreshesARowOnlyForItsSpecies)
{
  open_northwest();
  const auto sculpin = window->listed_model->get_iter("0:0");
  window->survey.abundances[10] = 2;
  EXPECT_FALSE(window->update_row_from_abundance(sculpin, lingcod));
  EXPECT_FALSE(window->update_row_from_abundance(window->listed_model->get_iter("0"), 10));
  EXPECT_EQ("None", sculpin->get_value(window->species_columns.col_abundance_label));

  EXPECT_TRUE(window->update_row_from_abundance(sculpin, 10));
  EXPECT_EQ("Few (2-10)", sculpin->get_value(window->species_columns.col_abundance_label));
}

TEST_F(AbundanceMenuTest, RefreshesAllRowsFromASavedSurvey)
{
  application_dir.file("species-views.csv", "viewid,speciesid,familyid\n1,11,F1\n1,11,F2\n");
  open_northwest();
  window->survey.abundances = {{lingcod, 900}, {77, 1}};
  const auto refresh = sigc::mem_fun(*window, &SurveyWindow::update_from_abundance);
  window->listed_model->foreach_iter(refresh);
  window->unlisted_model->foreach_iter(refresh);

  EXPECT_EQ("Sculpins:*\n  11 Lingcod = Many (11-100)*\n"
            "Greenlings:*\n  11 Lingcod = Many (11-100)*\n",
            listed_rows());
  EXPECT_EQ("Greenlings:*\n  12 Kelp Greenling = None\n  11 Lingcod = Many (11-100)*\n"
            "Sculpins:\n  10 Longfin Sculpin = None\n",
            unlisted_rows());
  EXPECT_EQ((Abundances{{10, 0}, {lingcod, 900}, {kelp_greenling, 0}, {77, 1}}),
            window->survey.abundances)
      << "the survey keeps an abundance above the last choice; each row adds an entry";
}

TEST_F(AbundanceMenuTest, FollowsTheSurveyType)
{
  open_northwest();
  mark(lingcod, 3);
  EXPECT_EQ(window->abundance_menus[1], menu_for(lingcod));

  choose_survey_type("Northwest: species only");
  EXPECT_EQ(window->abundance_menus[2], menu_for(lingcod));
  EXPECT_EQ("Sculpins:*\n  10 Longfin Sculpin = None*\nGreenlings:*\n  11 Lingcod = Seen*\n",
            listed_rows());
  EXPECT_EQ((Abundances{{lingcod, 3}}), window->survey.abundances);
}

TEST_F(AbundanceMenuTest, OffersOnlyPresenceOfSomeInvertebrates)
{
  open_with_invertebrates();
  EXPECT_EQ(window->abundance_menus[99], menu_for(mottled_star));
  EXPECT_EQ(window->current_abundance_menu, menu_for(20)) << "another kind of invertebrate";

  choose_item(*window->abundance_menus[99], "Present");
  EXPECT_EQ((Abundances{{20, 1}}), window->survey.abundances) << "acts on the latest species";
  mark(mottled_star, 1);
  EXPECT_EQ("Sculpins:*\n  10 Longfin Sculpin = None*\nGreenlings:*\n  11 Lingcod = None*\n"
            "Sea Stars:*\n  20 Ochre Star = Single (1)*\n  21 Mottled Star = Single (1)*\n",
            listed_rows())
      << "labels come from the survey type's list";
}

TEST_F(AbundanceMenuTest, InformsTheUserIfTheDataLackTheList)
{
  application_dir.file("abundance-choices.csv",
                       "responseid,survey_subtype_id,label,abun\n301,3,Single (1),1\n");
  open_with_invertebrates();
  const auto without_list = [&](int id) {
    const auto seen = answer_next_dialog(Gtk::RESPONSE_OK, [&] { menu_for(id); });
    EXPECT_EQ(0u, seen.text.find("The number seen of species 00" + std::to_string(id) +
                                 " cannot be chosen, because the data files lack the choices"))
        << seen.text;
  };
  without_list(mottled_star);
  without_list(13); // a gap between species
  without_list(98); // beyond the last species
  EXPECT_EQ(window->current_abundance_menu, menu_for(lingcod));

  window->current_abundance_menu = nullptr;
  without_list(lingcod);
  EXPECT_TRUE(window->survey.abundances.empty());
}

// --- keys in the menu ---

namespace {

class KeysInTheMenu : public AbundanceMenuTest
{
public:
  // Opens the menu of a species as a key does, and types a letter or digit in it. Returns whether
  // the menu has closed.
  bool type_in_menu(int id, const char* text)
  {
    window->popup_abundance_menu(id, 0, GDK_CURRENT_TIME);
    auto* const menu = window->current_abundance_menu;
    wait_until("the menu is open", [&] { return menu->get_mapped(); });
    type_text(*window, text);
    return !close_open_menu();
  }
};

} // namespace

TEST_F(KeysInTheMenu, TheFirstLetterOfOneLabelChoosesIt)
{
  open_northwest();
  const std::pair<const char*, int> letters[] = {{"s", 1}, {"F", 2}, {"m", 3}, {"n", 0}};
  for (const auto& [letter, abundance] : letters) {
    EXPECT_TRUE(type_in_menu(lingcod, letter)) << letter;
    EXPECT_EQ((Abundances{{lingcod, abundance}}), window->survey.abundances) << letter;
  }
}

TEST_F(KeysInTheMenu, ALetterOfNoLabelOrOfSeveralChoosesNothing)
{
  application_dir.file("abundance-choices.csv",
                       "responseid,survey_subtype_id,label,abun\n"
                       "101,1,1,1\n102,1,2-10,2\n103,1,11-100,3\n104,1,Some,4\n");
  open_northwest();
  for (const char* text : {"1", "x", "("})
    EXPECT_FALSE(type_in_menu(lingcod, text)) << text;
  EXPECT_TRUE(window->survey.abundances.empty());
  EXPECT_TRUE(type_in_menu(lingcod, "2"));
  EXPECT_EQ((Abundances{{lingcod, 2}}), window->survey.abundances);
}
