// This program links only the plain libraries, like a command-line tool.

#include "data/data-file-info.h"
#include "data/data-params.h"
#include "data/reference-data.h"
#include "data/region-info.h"
#include "store/survey-files.h"
#include "support/data-set.h"
#include "support/output.h"

#include <gtest/gtest.h>
#include <link.h>

#include <string>
#include <vector>

namespace {

int add_library(dl_phdr_info* library, std::size_t, void* names)
{
  static_cast<std::vector<std::string>*>(names)->emplace_back(library->dlpi_name);
  return 0;
}

// Returns the names of the shared libraries of this process, including indirect ones.
std::vector<std::string> loaded_libraries()
{
  std::vector<std::string> names;
  dl_iterate_phdr(&add_library, &names);
  return names;
}

} // namespace

TEST(PlainProgram, LoadsNoGraphicalLibrary)
{
  const std::vector<std::string> names = loaded_libraries();
  EXPECT_LT(1U, names.size());
  for (const std::string& name : names)
    for (const char* const upper : {"libgtk", "libgdk-", "libgdkmm", "libsoup", "libX11"})
      EXPECT_EQ(std::string::npos, name.find(upper)) << name;
}

TEST(PlainProgram, ReadsADataSet)
{
  const DataSet set;
  set.minimal();
  ReferenceData data;
  output_of([&] { EXPECT_EQ(RET_SUCCESS, read_data_set(set.dir, data)); });
  EXPECT_EQ("20210101000000", data.data_file_info->timestamp);
  EXPECT_TRUE(data.data_defs && data.habitat_info && data.species_views && data.abundance_choices);
  EXPECT_EQ(28, data.data_params->params["temp_min_f"]);
}

TEST(PlainProgram, StopsAtTheFirstInvalidTable)
{
  const DataSet set;
  set.minimal();
  set.remove("region-info.csv");
  ReferenceData data;
  output_of([&] { EXPECT_EQ(RET_FAILURE, read_data_set(set.dir, data)); });
  EXPECT_TRUE(data.region_info);
  EXPECT_FALSE(data.habitat_info);
}

TEST(PlainProgram, ListsAndDescribesTheSurveysOfAStore)
{
  const DataSet set;
  set.minimal();
  ReferenceData data;
  output_of([&] { read_data_set(set.dir, data); });
  std::string root = set.dir + "store";
  const std::string directory = survey_directory(root, SurveyState::READY_TO_UPLOAD);
  write_file(directory + "/a.MAVO-Survey",
             "<MAVO-Survey version='1.0'><survey><member_id>1234</member_id>"
             "<subregion>PNW</subregion><survey_subtype>1</survey_subtype></survey></MAVO-Survey>");
  const std::vector<std::string> paths = list_survey_files(directory);
  EXPECT_EQ(std::vector<std::string>{directory + "/a.MAVO-Survey"}, paths);
  EXPECT_EQ("Member 1234 - Northwest: abundance - 0000-00-00 (current survey)\n",
            describe_survey_files(paths, paths.front(), *data.region_info, *data.data_defs));
}
