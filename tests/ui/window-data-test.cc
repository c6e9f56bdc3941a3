// Tests the tables of a window when newer reference data are installed.
#include "core/my-app.h"
#include "data/reference-data.h"
#include "support/output.h"
#include "support/window-fixture.h"
#include "ui/confirm-panel.h"
#include "ui/drop-down-box.h"
#include "ui/survey-panel1.h"
#include "ui/survey-panel2.h"
#include "ui/survey-window.h"

#include <gtkmm/entry.h>
#include <gtkmm/label.h>

#include <algorithm>

namespace {

class WindowData : public WindowTest
{
public:
  WindowData() { create_window(); }

  // Installs data that differ from the minimal set in every table that the panels read.
  void install_newer_data() const
  {
    application_dir.file("data-file-info.txt", "timestamp=20220202000000\nupdated=today\n");
    application_dir.file("region-info.csv",
                         "regioncode,subregioncode,regionname,subregionname,surveytypeid,"
                         "surveytypename,hasabundance,hasfish,hasinverts,canhaveinverts,visible\n"
                         "PAC,PNW,Pacific,New Northwest,1,New type,1,1,0,1,1\n"
                         "PAC,CAL,Pacific,California,5,California: abundance,1,1,0,1,1\n"
                         "CAR,FLA,Caribbean,Florida & Gulf,6,Florida: abundance,1,1,0,1,1\n");
    application_dir.file("habitat.csv", "habitatid,habitatname,habitatdescr\n"
                                        "1,New Kelp,Kelp.\n2,Wall,Rock.\n3,Reef,Coral.\n");
    application_dir.file("data-parameters.csv", "parameter,value\ntemp_max_f,30\n");
    application_dir.file("species-views.csv", "viewid,speciesid,familyid\n1,10,F1\n3,10,F1\n"
                                              "4,1,F1\n");
    application_dir.file("abundance-choices.csv", "responseid,survey_subtype_id,label,abun\n"
                                                  "901,1,New single,1\n990,99,There,1\n");
    output_of([this] { EXPECT_EQ(RET_SUCCESS, my_app->read_data_files()); });
  }

  static std::vector<std::string> labels_of(const DropDownBox& box)
  {
    std::vector<std::string> labels;
    for (const auto& item : box.items)
      labels.push_back(item.second.raw());
    return labels;
  }

  // Returns the number of species in the list.
  std::size_t listed_species() const
  {
    std::size_t count = 0;
    for (const auto& family : window->listed_model->children())
      count += family.children().size();
    return count;
  }
};

} // namespace

TEST_F(WindowData, StayTheSameInAnOpenWindowAfterAnUpdate)
{
  const ReferenceData before = my_app->reference_data();
  install_newer_data();
  const ReferenceData& kept = window->reference_data;
  EXPECT_EQ(before.data_file_info, kept.data_file_info);
  EXPECT_EQ(before.data_defs, kept.data_defs);
  EXPECT_EQ(before.data_params, kept.data_params);
  EXPECT_EQ(before.region_info, kept.region_info);
  EXPECT_EQ(before.habitat_info, kept.habitat_info);
  EXPECT_EQ(before.species_views, kept.species_views);
  EXPECT_EQ(before.abundance_choices, kept.abundance_choices);
  EXPECT_NE(before.region_info, my_app->region_info);
}

TEST_F(WindowData, FillAllPanelsFromOneSetAfterAnUpdate)
{
  install_newer_data();
  choose_subregion("Northwest");
  const std::vector<std::string> habitats = labels_of(*window->survey_panel2->habitat);
  EXPECT_NE(habitats.end(), std::find(habitats.begin(), habitats.end(), "Kelp"));
  choose_survey_type("Northwest: abundance");
  EXPECT_EQ(2U, listed_species());
  EXPECT_EQ("Single (1)", window->survey.abundance_choices->choices.at(1).label.raw());

  window->survey_panel2->surface_temp->set_text("60");
  window->confirm_panel->refresh();
  EXPECT_EQ(std::string::npos,
            window->confirm_panel->conf_surface_temp->get_text().find("must be between"))
      << window->confirm_panel->conf_surface_temp->get_text();
}

TEST_F(WindowData, AreUpToDateInANewWindow)
{
  install_newer_data();
  create_window();
  EXPECT_EQ(my_app->region_info, window->reference_data.region_info);
  choose_subregion("New Northwest");
  choose_survey_type("New type");
  EXPECT_EQ(1U, listed_species());
  EXPECT_EQ("New single", window->survey.abundance_choices->choices.at(1).label.raw());
}
