#include "ui/survey-tree-columns.h"

#include <gtest/gtest.h>
#include <gtkmm/treestore.h>

TEST(SurveyTreeColumns, StorePathStateAndDescriptionInThatOrder)
{
  const SurveyTreeColumns columns;
  EXPECT_EQ(0, columns.path.index());
  EXPECT_EQ(1, columns.which_dir.index());
  EXPECT_EQ(2, columns.description.index());

  const auto store = Gtk::TreeStore::create(columns);
  const auto heading = *store->append();
  columns.set(heading, "", MyApp::WD_NOT_A_SURVEY, "Uploaded");
  const auto survey = *store->append(heading.children());
  columns.set(survey, "/tmp/a b\xff", MyApp::WD_UPLOADED, "Dive & more");

  EXPECT_EQ("", std::string(heading[columns.path]));
  EXPECT_EQ(MyApp::WD_NOT_A_SURVEY, MyApp::WhichDir(heading[columns.which_dir]));
  EXPECT_EQ("/tmp/a b\xff", std::string(survey[columns.path])) << "a path may have any bytes";
  EXPECT_EQ(MyApp::WD_UPLOADED, MyApp::WhichDir(survey[columns.which_dir]));
  EXPECT_EQ("Dive & more", Glib::ustring(survey[columns.description]));
}

TEST(SurveyTreeColumns, ShareOneTypeForTheState)
{
  const SurveyTreeColumns first;
  const SurveyTreeColumns second;
  EXPECT_EQ(first.which_dir.type(), second.which_dir.type());
  EXPECT_TRUE(G_TYPE_IS_BOXED(first.which_dir.type()));
}
