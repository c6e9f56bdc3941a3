#include "core/c-resource.h"
#include "core/my-app.h"
#include "data/survey-data.h"
#include "support/application.h"
#include "support/data-set.h"
#include "support/output.h"

#include <fcntl.h>
#include <glibmm/miscutils.h>
#include <gtkmm/application.h>
#include <sys/file.h>

#include <filesystem>

#include "data-checks.h"

namespace {

std::string metadata(const std::string& timestamp, const std::string& updated = "today")
{
  return "version=1\ntimestamp=" + timestamp + "\nupdated=" + updated + "\n";
}

// The program's own copy is the minimal data set of `built_in`; the user's copy
// is empty until a test fills it.
class ReadDataFiles : public testing::Test
{
public:
  ReadDataFiles()
  {
    if (!app)
      output_of([] { app = std::make_unique<MyApp>(test_application()); });
    app->local_data_dir = local.dir.substr(0, local.dir.size() - 1);
    local_dir = local.dir + "data-files/";
  }
  ~ReadDataFiles() override { free_tables(); }
  ReadDataFiles(const ReadDataFiles&) = delete;
  ReadDataFiles& operator=(const ReadDataFiles&) = delete;
  static void TearDownTestSuite() { app.reset(); }

protected:
  // Frees the old tables, because the program never does.
  void free_tables()
  {
    delete app->data_file_info;
    delete app->data_defs;
    delete app->data_params;
    delete app->region_info;
    delete app->habitat_info;
    delete app->species_views;
    delete app->abundance_choices;
    app->data_file_info = nullptr;
    app->data_defs = nullptr;
    app->data_params = nullptr;
    app->region_info = nullptr;
    app->habitat_info = nullptr;
    app->species_views = nullptr;
    app->abundance_choices = nullptr;
  }

  // Writes a complete copy with these metadata to the user's directory.
  void local_copy(const std::string& info) const
  {
    for (const auto& entry : std::filesystem::directory_iterator(built_in.root + "/data-files"))
      write_file(local_dir + entry.path().filename().string(), read_file(entry.path().string()));
    write_file(local_dir + "data-file-info.txt", info);
  }

  std::string backup_of_local() const
  {
    const std::filesystem::path path = app->local_data_dir;
    return path.parent_path() / ("." + path.filename().string() + "-before-update");
  }

  std::string read(RetCode expected)
  {
    free_tables();
    return output_of([&] { EXPECT_EQ(expected, app->read_data_files()); });
  }

  ApplicationDir built_in;
  DataSet local;
  std::string local_dir;
  static std::unique_ptr<MyApp> app; // shared, because its constructor searches all programs
};
std::unique_ptr<MyApp> ReadDataFiles::app;

} // namespace

TEST_F(ReadDataFiles, LoadsAllTables)
{
  read(RET_SUCCESS);
  EXPECT_TRUE(app->data_file_info->valid);
  EXPECT_TRUE(app->data_defs->is_valid());
  EXPECT_TRUE(app->data_params->is_valid());
  EXPECT_TRUE(app->region_info->is_valid());
  EXPECT_TRUE(app->habitat_info->is_valid());
  EXPECT_TRUE(app->abundance_choices->is_valid());
  ASSERT_TRUE(app->species_views->is_valid());
  EXPECT_EQ("CAL", app->species_views->view_subregions.at(3)) << "copied from the definitions";
  EXPECT_EQ(2U, app->region_info->subregions["PNW"].views.size());
}

TEST_F(ReadDataFiles, ChoosesTheNewerCopy)
{
  const struct {
    const char* why;
    const char* local_info;    // null: no such file
    const char* built_in_info; // null: no such file
    std::string printed;
  } cases[] = {
      {"equal", "timestamp=2\nupdated=x\n", "timestamp=2\nupdated=x\n",
       "Using data in " + local_dir + " (2).\n"},
      {"local newer", "timestamp=3\nupdated=x\n", "timestamp=2\nupdated=x\n",
       "Using data in " + local_dir + " (3).\n"},
      {"local older", "timestamp=1\nupdated=x\n", "timestamp=2\nupdated=x\n",
       "Hmm, data in " + local_dir + " is older (1) than data in data-files/ (2).\n"},
      {"a prefix is older", "timestamp=2021\nupdated=x\n", "timestamp=20210101\nupdated=x\n",
       "Hmm, data in " + local_dir + " is older (2021) than data in data-files/ (20210101).\n"},
      {"compared as bytes", "timestamp=9\nupdated=x\n", "timestamp=20210101\nupdated=x\n",
       "Using data in " + local_dir + " (9).\n"},
      {"letters sort after digits", "timestamp=b\nupdated=x\n", "timestamp=2021-01-01\nupdated=x\n",
       "Using data in " + local_dir + " (b).\n"},
      {"bytes above 127 are the largest", "timestamp=\xC3\xA9\nupdated=x\n",
       "timestamp=z\nupdated=x\n", "Using data in " + local_dir + " (\xC3\xA9).\n"},
      {"no local copy", nullptr, "timestamp=2\nupdated=x\n",
       "No data in " + local_dir + "; using data in data-files/ (2).\n"},
      {"local copy not valid", "timestamp=3\n", "timestamp=2\nupdated=x\n",
       "No data in " + local_dir + "; using data in data-files/ (2).\n"},
      {"only a local copy", "timestamp=1\nupdated=x\n", nullptr,
       "Using data in " + local_dir + " (1).\n"},
      {"built-in copy without timestamp", "timestamp=1\nupdated=x\n", "updated=x\n",
       "Using data in " + local_dir + " (1).\n"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.why);
    local_copy("");
    built_in.file("data-file-info.txt", c.built_in_info ? c.built_in_info : "");
    if (c.local_info)
      write_file(local_dir + "data-file-info.txt", c.local_info);
    else
      std::filesystem::remove(local_dir + "data-file-info.txt");
    if (!c.built_in_info)
      std::filesystem::remove(built_in.root + "/data-files/data-file-info.txt");
    EXPECT_EQ(c.printed, read(RET_SUCCESS));
  }
}

TEST_F(ReadDataFiles, ReadsTheChosenCopy)
{
  local_copy(metadata("29991231"));
  write_file(local_dir + "data-parameters.csv", "parameter,value\ntemp_min_c,-11\n");
  read(RET_SUCCESS);
  EXPECT_EQ("29991231", app->data_file_info->timestamp);
  EXPECT_EQ(-11, app->data_params->params["temp_min_c"]);
}

TEST_F(ReadDataFiles, FailsWithoutAnyData)
{
  std::filesystem::remove(built_in.root + "/data-files/data-file-info.txt");
  EXPECT_EQ("Oh no!  We have no valid data!!\n", read(RET_FAILURE));
  EXPECT_EQ(nullptr, app->data_file_info);
}

TEST_F(ReadDataFiles, FailsIfTheNewerBuiltInCopyHasNoDate)
{
  local_copy(metadata("1"));
  built_in.file("data-file-info.txt", "timestamp=2\n");
  EXPECT_EQ("Hmm, data in " + local_dir + " is older (1) than data in data-files/ (2).\n",
            read(RET_FAILURE));
  ASSERT_NE(nullptr, app->data_file_info);
  EXPECT_FALSE(app->data_file_info->valid);
  EXPECT_EQ(nullptr, app->data_defs);
}

TEST_F(ReadDataFiles, DoesNotFallBackToTheOtherCopy)
{
  local_copy(metadata("29991231"));
  std::filesystem::remove(local_dir + "habitat.csv");
  EXPECT_EQ("Using data in " + local_dir + " (29991231).\nFailed to open " + local_dir +
                "habitat.csv!\n",
            read(RET_FAILURE));
}

TEST_F(ReadDataFiles, StopsAtTheFirstTableThatFails)
{
  const char* const in_order[] = {"data-definitions.csv",  "data-parameters.csv",
                                  "region-info.csv",       "habitatregion.csv",
                                  "abundance-choices.csv", "species-view-definitions.csv",
                                  "species-views.csv"};
  for (std::size_t failing = 0; failing < std::size(in_order); ++failing) {
    SCOPED_TRACE(in_order[failing]);
    local_copy(metadata("29991231"));
    for (std::size_t i = failing; i < std::size(in_order); ++i)
      std::filesystem::remove(local_dir + in_order[i]);
    const std::string out = read(RET_FAILURE);
    EXPECT_EQ("Using data in " + local_dir + " (29991231).\nFailed to open " + local_dir +
                  in_order[failing] + "!\n",
              out);
    EXPECT_NE(nullptr, app->data_defs);
    EXPECT_EQ(failing >= 1, app->data_params != nullptr);
    EXPECT_EQ(failing >= 2, app->region_info != nullptr);
    EXPECT_EQ(failing >= 3, app->habitat_info != nullptr);
    EXPECT_EQ(failing >= 4, app->abundance_choices != nullptr);
    EXPECT_EQ(failing >= 6, app->species_views != nullptr);
  }
}

TEST_F(ReadDataFiles, KeepsTheOldTables)
{
  read(RET_SUCCESS);
  const std::unique_ptr<RegionInfo> old_regions(app->region_info);
  const std::unique_ptr<DataDefs> old_defs(app->data_defs);
  app->region_info = nullptr;
  app->data_defs = nullptr;
  read(RET_SUCCESS);
  EXPECT_NE(old_regions.get(), app->region_info);
  EXPECT_EQ(7U, old_regions->regions.size());
  EXPECT_FALSE(old_defs->defs["depth"].labels.empty());
}

TEST_F(ReadDataFiles, ReadsTheShippedDataWithoutComplaint)
{
  built_in.use_shipped_data();
  const std::string out = read(RET_SUCCESS);
  EXPECT_EQ(0U, out.find("No data in " + local_dir + "; using data in data-files/ (")) << out;
  EXPECT_EQ(out.size() - 1, out.find('\n')) << out;
}

TEST_F(ReadDataFiles, CreatesTheUsersDirectoryFirst)
{
  app->local_data_dir = local.dir + "config/MAVO-Survey";
  EXPECT_EQ("No data in " + local.dir +
                "config/MAVO-Survey/data-files/; using data in data-files/ (20210101000000).\n",
            read(RET_SUCCESS));
  EXPECT_TRUE(std::filesystem::is_empty(local.dir + "config/MAVO-Survey"));
}

TEST_F(ReadDataFiles, TakesTheUsersDirectoryFromTheConfiguration)
{
  app->local_data_dir.clear();
  const std::string expected = Glib::get_user_config_dir() + "/MAVO-Survey";
  EXPECT_EQ(expected, app->get_local_data_dir());
  EXPECT_TRUE(std::filesystem::is_directory(expected));
  const TraceLevel level(1);
  EXPECT_EQ("local_data_dir: " + expected + "\n",
            output_of([&] { EXPECT_EQ(expected, app->get_local_data_dir()); }));
}

TEST_F(ReadDataFiles, WorksWithoutADirectoryForTheUser)
{
  write_file(local.dir + "file", "in the way");
  app->local_data_dir = local.dir + "file/MAVO-Survey";
  read(RET_SUCCESS);
  EXPECT_EQ(local.dir + "file/MAVO-Survey", app->get_local_data_dir());
}

// --- an interrupted install ---

TEST_F(ReadDataFiles, RestoresTheBackupOfAnInterruptedInstall)
{
  local_copy(metadata("20230303"));
  const std::string backup = backup_of_local();
  std::filesystem::create_directories(backup + "/kept");
  std::filesystem::rename(local_dir, backup + "/kept/data-files");
  write_file(local_dir + "data-file-info.txt", metadata("20240404"));
  EXPECT_EQ("Restored the data in " + app->local_data_dir + " from a backup.\nUsing data in " +
                local_dir + " (20230303).\n",
            read(RET_SUCCESS));
  EXPECT_EQ("Using data in " + local_dir + " (20230303).\n", read(RET_SUCCESS));
  EXPECT_FALSE(file_exists(backup));
}

TEST_F(ReadDataFiles, UsesTheBackupWhileAnotherProgramInstallsData)
{
  local_copy(metadata("20230303"));
  const std::string backup = backup_of_local();
  std::filesystem::create_directories(backup + "/kept");
  std::filesystem::copy(local_dir, backup + "/kept/data-files");
  write_file(local_dir + "data-file-info.txt", "half a line");
  {
    const Descriptor other(open(app->local_data_dir.c_str(), O_RDONLY | O_DIRECTORY));
    ASSERT_EQ(0, flock(other.number, LOCK_EX));
    EXPECT_EQ("Another program is installing data in " + app->local_data_dir +
                  "; waiting for up to 5 seconds.\nUsing data in " + backup +
                  "/kept/data-files/ (20230303).\n",
              read(RET_SUCCESS));
  }
  read(RET_SUCCESS);
  EXPECT_FALSE(file_exists(backup));
}

TEST_F(ReadDataFiles, UsesTheProgramsDataWhileAnotherProgramInstallsAFirstCopy)
{
  const std::string backup = backup_of_local();
  std::filesystem::create_directories(backup + "/kept/data-files");
  write_file(local_dir + "data-file-info.txt", metadata("20230303"));
  const Descriptor other(open(app->local_data_dir.c_str(), O_RDONLY | O_DIRECTORY));
  ASSERT_EQ(0, flock(other.number, LOCK_EX));
  const std::string said = read(RET_SUCCESS);
  EXPECT_NE(std::string::npos,
            said.find("No data in " + backup + "/kept/data-files/; using data in data-files/"))
      << said;
  std::filesystem::remove_all(backup);
}
