#include "core/my-app.h"
#include "support/application.h"
#include "support/data-set.h"
#include "support/output.h"

#include <gdkmm/pixbuf.h>
#include <gtest/gtest.h>
#include <gtkmm/application.h>

#include <memory>

namespace {

class MyAppTest : public testing::Test
{
protected:
  void SetUp() override { MyApp::icon_list.clear(); }

  // Constructs the application object and stores what it prints in `printed`.
  std::unique_ptr<MyApp> make()
  {
    testing::internal::CaptureStdout();
    auto app = std::make_unique<MyApp>(test_application());
    printed = testing::internal::GetCapturedStdout();
    return app;
  }

  ApplicationDir dir;
  std::string printed;
};

} // namespace

TEST_F(MyAppTest, LoadsTheTablesAndHasTheServersAddresses)
{
  const auto app = make();
  EXPECT_TRUE(app->data_file_info && app->data_defs && app->data_params && app->region_info &&
              app->habitat_info && app->species_views && app->abundance_choices);
  EXPECT_EQ("http://" MAVO_WEB_HOST "/dataentry/upload-survey.php", app->upload_url);
  EXPECT_EQ("http://" MAVO_WEB_HOST "/offline-data-entry/?get-version=", app->version_query_url);
  EXPECT_EQ("", app->survey_root);
}

TEST_F(MyAppTest, LoadsFiveIconsOfIncreasingSizeOnce)
{
  const auto app = make();
  ASSERT_EQ(5U, MyApp::icon_list.size());
  int size = 16;
  for (const auto& icon : MyApp::icon_list) {
    ASSERT_TRUE(icon);
    EXPECT_EQ(size, icon->get_width());
    size *= 2;
  }
  const auto another = make();
  EXPECT_EQ(5U, MyApp::icon_list.size());
}

TEST_F(MyAppTest, StoresNullForAMissingIcon)
{
  dir.use_own_resources("MAVO-logo");
  const auto app = make();
  ASSERT_EQ(5U, MyApp::icon_list.size());
  for (const auto& icon : MyApp::icon_list)
    EXPECT_FALSE(icon);
}

TEST_F(MyAppTest, DoesNotReportMissingUrlHandlersBelowLevelZero)
{
  const TraceLevel silent(-1);
  make();
  EXPECT_EQ(std::string::npos, printed.find("default app for"));
}
