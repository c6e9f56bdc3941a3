// Checks that the window accepts texts of any length and with any markup, in its entries and in the
// data.

#include "core/displayed-text.h"
#include "support/main-loop.h"
#include "ui/confirm-panel.h"
#include "ui/listed-panel.h"
#include "ui/member-panel.h"
#include "ui/species-window.h"
#include "ui/start-panel.h"
#include "ui/survey-panel1.h"
#include "ui/survey-panel2.h"
#include "ui/survey-window.h"
#include "ui/unlisted-panel.h"

#include <gtkmm/menu.h>
#include <gtkmm/menuitem.h>

namespace {

constexpr int screen_width = 1366;
constexpr int screen_height = 768;
constexpr int max_row_height = 40; // pixels; a row of one line has about 22

std::string times(int count, const std::string& text)
{
  std::string all;
  for (int i = 0; i < count; ++i)
    all += text;
  return all;
}

struct Attack {
  const char* why;
  std::string text; // without line ends, which a data file cannot have
};

const Attack attacks[] = {
    {"one long word", times(3500, "W")},
    {"many words", times(20000, "many words ")},
    {"combining characters", "e" + times(10000, "\u0301")},
    {"wide characters", times(3500, "\ufdfd")},
    {"a huge font", "<span size=\"100000000\">huge</span>"},
    {"huge by nesting", times(40, "<big>") + "huge" + times(40, "</big>")},
    {"letters far apart", "<span letter_spacing=\"100000000\">wide</span>"},
    {"a raised letter", "<span rise=\"100000000\">raised</span>"},
    {"long and marked up", "<b>" + times(3500, "W") + "</b>"},
    {"not quite markup", "<span size=\"100000000\">" + times(3500, "W")},
};

class LongText : public SpeciesWindowTest
{
protected:
  // Replaces every displayed text of the data with `text`.
  void put_into_data(const std::string& text)
  {
    std::string quoted = "\"";
    for (const char c : text)
      quoted += c == '"' ? std::string("\"\"") : std::string(1, c);
    quoted += "\"";
    const auto& dir = application_dir;
    dir.file("data-definitions.csv", "group,value,label\ndivestart,9," + quoted +
                                         "\nvisibility,1," + quoted + "\ndepth,2," + quoted +
                                         "\ncurrent,1," + quoted + "\n");
    dir.file("region-info.csv",
             "regioncode,subregioncode,regionname,subregionname,surveytypeid,surveytypename,"
             "hasabundance,hasfish,hasinverts,canhaveinverts,visible\nCAR,FLA,Caribbean," +
                 quoted + ",6," + quoted + ",1,1,0,1,1\n");
    dir.file("CAR-family-info.csv",
             "familyid,scientificname,commonname\nF1," + quoted + "," + quoted + "\n");
    dir.file("CAR-species-info.csv",
             "speciesid,scientificname,commonname,familyid,invertebratetype,rarefishind,"
             "spanishname\n1,A," +
                 quoted + ",F1,0,1," + quoted + "\n2," + quoted + ",B,F1,0,1," + quoted + "\n");
    dir.file("CAR-geog.csv",
             "geogid,name\n2," + quoted + "\n2001," + quoted + "\n20010001," + quoted + "\n");
    dir.file("habitat.csv",
             "habitatid,habitatname,habitatdescr\n3," + quoted + "," + quoted + "\n");
    dir.file("habitatregion.csv", "regioncode,habitat,habitatid\nCAR,1,3\n");
    dir.file("abundance-choices.csv",
             "responseid,survey_subtype_id,label,abun\n601,6," + quoted + ",1\n");
    dir.file("species-view-definitions.csv",
             "viewid,subregioncode,viewname,isdefault\n4,FLA," + quoted + ",1\n");
    dir.file("species-views.csv", "viewid,speciesid,familyid\n4,1,F1\n");
  }

  // Chooses the first row of every box and marks both species.
  void choose_everything() const
  {
    auto& where = *window->survey_panel1;
    const auto& conditions = *window->survey_panel2;
    where.subregion->set_active(0);
    where.survey_subtype->set_active(0);
    for (auto* box :
         {where.year, where.month, where.mday, where.dive_start, conditions.visibility,
          conditions.avg_depth, conditions.max_depth, conditions.current, conditions.habitat})
      box->set_active(0);
    where.zonecode->set_text("20010001");
    window->listed_panel->spanish_enable->set_active();
    window->unlisted_panel->species_search->set_text("a");
    mark(1, 1);
    mark(2, 1);
  }

  void expect_bounded(Gtk::Widget& widget)
  {
    if (!widget.get_visible())
      return;
    Gtk::Requisition least;
    Gtk::Requisition natural;
    widget.get_preferred_size(least, natural);
    EXPECT_LE(least.width, screen_width) << widget.get_name();
    if (const auto* const label = dynamic_cast<Gtk::Label*>(&widget)) {
      EXPECT_LE(label->get_text().size(), 2500U) << label->get_name();
      EXPECT_LE(natural.width, screen_width) << label->get_text();
      EXPECT_LE(natural.height, 10 * screen_height) << label->get_name();
    }
    if (auto* const tree = dynamic_cast<Gtk::TreeView*>(&widget))
      expect_rows_of_one_line(*tree);
    else if (auto* const container = dynamic_cast<Gtk::Container*>(&widget))
      container->foreach ([this](Gtk::Widget& child) { expect_bounded(child); });
  }

  static void expect_rows_of_one_line(Gtk::TreeView& tree)
  {
    if (!tree.get_model() || tree.get_model()->children().empty() || tree.get_columns().empty())
      return;
    for (auto* const column : tree.get_columns()) {
      Gdk::Rectangle area;
      tree.get_background_area(Gtk::TreePath("0"), *column, area);
      EXPECT_LE(area.get_height(), max_row_height) << tree.get_name() << " " << column->get_title();
      EXPECT_LE(column->get_min_width(), screen_width / 2) << column->get_title();
    }
  }

  void expect_window_on_screen() const
  {
    settle();
    int width = 0;
    int height = 0;
    window->get_size(width, height);
    EXPECT_LE(width, screen_width);
    EXPECT_LE(height, screen_height);
    EXPECT_LE(window->get_title().size(), 500U);
  }

  void expect_all_pages_bounded()
  {
    for (int page = 0; page < window->notebook->get_n_pages(); ++page) {
      SCOPED_TRACE(page);
      go_to_page(page);
      settle();
      expect_bounded(*window);
      expect_window_on_screen();
    }
  }
};

} // namespace

TEST_F(LongText, TypedIntoTheEntriesKeepsTheWindowOnTheScreen)
{
  open_northwest();
  for (const auto& [why, text] : attacks) {
    SCOPED_TRACE(why);
    window->member_panel->member_id->set_text(text);
    window->member_panel->last_name->set_text(text);
    window->survey_panel1->zonecode->set_text("31020003" + text);
    window->survey_panel1->zone_search->set_text(text);
    window->survey_panel2->surface_temp->set_text(text);
    window->survey_panel2->bottom_temp->set_text(text);
    window->survey_panel2->bottom_time->set_text("20" + text);
    window->unlisted_panel->species_search->set_text(text);
    expect_all_pages_bounded();
    EXPECT_EQ(window->member_panel->last_name->get_text_length(),
              window->member_panel->get_last_name().size());
  }
}

TEST_F(LongText, OnTheConfirmationPageIsTruncatedAndTheEntryKeepsAll)
{
  open_northwest();
  window->member_panel->last_name->set_text(times(3500, "W"));
  go_to_page(window->confirm_panel->page);
  EXPECT_EQ(times(static_cast<int>(longest_displayed_text), "W") + "\u2026",
            window->confirm_panel->conf_last_name->get_text().raw());
  EXPECT_EQ(times(3500, "W"), window->member_panel->get_last_name().raw());
  Glib::ustring ignored;
  ASSERT_EQ(RET_SUCCESS, window->generate_xml_string(ignored, false));
  EXPECT_NE(std::string::npos, window->survey.xml_current.raw().find(times(3500, "W")));
}

TEST_F(LongText, OfTheDataKeepsTheWindowOnTheScreen)
{
  for (const auto& [why, text] : attacks) {
    SCOPED_TRACE(why);
    put_into_data(text);
    my_app = nullptr;
    open_window();
    choose_everything();
    expect_all_pages_bounded();
    window->hide();
  }
}

TEST_F(LongText, OfTheDataKeepsTheListsOfChoicesOnTheScreen)
{
  for (const auto& [why, text] : attacks) {
    SCOPED_TRACE(why);
    put_into_data(text);
    my_app = nullptr;
    open_window();
    choose_everything();
    ASSERT_NE(nullptr, window->current_abundance_menu);
    Gtk::Requisition least;
    Gtk::Requisition natural;
    window->current_abundance_menu->get_preferred_size(least, natural);
    EXPECT_LE(natural.width, screen_width);
    const auto& box = *window->survey_panel2->habitat;
    EXPECT_LE(box.get_active_text().size(), longest_displayed_line + 1);
    EXPECT_EQ(text, box.get_label().raw());
    window->hide();
  }
}

TEST_F(LongText, OfASpeciesStaysCompleteInItsRow)
{
  put_into_data(times(3500, "W"));
  open_window();
  choose_everything();
  const auto species = window->listed_model->get_iter("0:0");
  ASSERT_TRUE(species);
  EXPECT_NE(std::string::npos,
            species->get_value(window->species_columns.col_common).raw().find(times(3500, "W")));
}
