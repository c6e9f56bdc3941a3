#include "support/data-set.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace fs = std::filesystem;

namespace {

std::string new_directory()
{
  std::string name = (fs::temp_directory_path() / "mavo-test-XXXXXX").string();
  if (!mkdtemp(name.data()))
    throw std::runtime_error("cannot create a directory for the test");
  return name;
}

struct DataFile {
  const char* name;
  const char* text;
};

// Region PAC has rarity 1, no Spanish names, and an invertebrate of each kind. Region CAR has
// Spanish names, rarity 2, and only fish. Species 12 of PAC is in no view. Zones of PAC that
// begin with 4 belong to CAL.
const DataFile minimal_files[] = {
    {"data-file-info.txt", "version=1\ntimestamp=20210101000000\nupdated=January 1, 2021\n"},
    {"data-definitions.csv", "group,value,label\n"
                             "divestart,24,Midnight\ndivestart,1,1 AM\ndivestart,2,2 AM\n"
                             "divestart,3,3 AM\ndivestart,4,4 AM\ndivestart,5,5 AM\n"
                             "divestart,9,9 AM\ndivestart,10,10 AM\n"
                             "visibility,1,Poor\nvisibility,2,Good\n"
                             "depth,1,Snorkel\ndepth,2,Shallow\ndepth,3,Deep\n"
                             "current,1,None\ncurrent,2,Strong\n"},
    {"data-parameters.csv", "parameter,value\ntemp_min_f,28\ntemp_max_f,97\ntemp_min_c,-2\n"
                            "temp_max_c,36\nbottom_time_confirm_under,15\n"
                            "bottom_time_confirm_over,120\n"},
    {"region-info.csv", "regioncode,subregioncode,regionname,subregionname,surveytypeid,"
                        "surveytypename,hasabundance,hasfish,hasinverts,canhaveinverts,visible\n"
                        "PAC,PNW,Pacific,Northwest,1,Northwest: abundance,1,1,0,1,1\n"
                        "PAC,PNW,Pacific,Northwest,2,Northwest: species only,0,1,0,0,1\n"
                        "PAC,PNW,Pacific,Northwest,3,Northwest: fish and invertebrates,1,1,1,1,1\n"
                        "PAC,PNW,Pacific,Northwest,4,Northwest: old form,1,1,0,0,0\n"
                        "PAC,CAL,Pacific,California,5,California: abundance,1,1,0,1,1\n"
                        "CAR,FLA,Caribbean,Florida & Gulf,6,Florida: abundance,1,1,0,1,1\n"},
    {"PAC-family-info.csv", "familyid,scientificname,commonname\n"
                            "F1,Cottidae,Sculpins\nF2,Hexagrammidae,Greenlings\n"
                            "F3,Asteriidae,Sea Stars\n"},
    {"PAC-species-info.csv", "speciesid,scientificname,commonname,familyid,invertebratetype,"
                             "rarefishind\n"
                             "10,Jordania zonope,Longfin Sculpin,F1,0,0\n"
                             "11,Ophiodon elongatus,Lingcod,F2,0,1\n"
                             "12,Hexagrammos decagrammus,Kelp Greenling,F2,0,0\n"
                             "20,Pisaster ochraceus,Ochre Star,F3,1,0\n"
                             "21,Evasterias troschelii,Mottled Star,F3,2,0\n"},
    {"PAC-geog.csv", "geogid,name\n"
                     "3,Washington\n3102,San Juan Islands\n31020003,Rosario Wall\n"
                     "31020004,Deception Pass\n4,California\n4010,San Diego\n"
                     "40100010,La Jolla Cove\n"},
    {"CAR-family-info.csv", "familyid,scientificname,commonname\n"
                            "F1,Pomacanthidae,Angelfishes\nF2,Lutjanidae,Snappers\n"},
    {"CAR-species-info.csv", "speciesid,scientificname,commonname,familyid,invertebratetype,"
                             "rarefishind,spanishname\n"
                             "1,Pomacanthus paru,French Angelfish,F1,0,0,Cachama negra\n"
                             "2,Lutjanus griseus,\"Snapper, Gray\",F2,0,1,Pargo prieto\n"
                             "3,Lutjanus jocu,Dog & Cat Snapper,F2,0,2,Pargo jocú\n"},
    {"CAR-geog.csv", "geogid,name\n2,Florida\n2001,Florida Keys\n20010001,Molasses Reef\n"},
    {"habitat.csv", "habitatid,habitatname,habitatdescr\n"
                    "1,Kelp,Forest of kelp.\n2,Wall,Steep rock & ledges.\n3,Reef,Coral.\n"},
    {"habitatregion.csv", "regioncode,habitat,habitatid\nPAC,1,1\nPAC,3,2\nCAR,1,3\n"},
    {"abundance-choices.csv", "responseid,survey_subtype_id,label,abun\n"
                              "101,1,Single (1),1\n102,1,Few (2-10),2\n103,1,Many (11-100),3\n"
                              "201,2,Seen,1\n"
                              "301,3,Single (1),1\n302,3,Few (2-10),2\n"
                              "401,4,Single (1),1\n"
                              "501,5,Single (1),1\n"
                              "601,6,Single (1),1\n602,6,Few (2-10),2\n"
                              "990,99,There,1\n991,99,Not looked for,9\n"},
    {"species-view-definitions.csv", "viewid,subregioncode,viewname,isdefault\n"
                                     "1,PNW,Common,1\n2,PNW,With invertebrates,0\n"
                                     "3,CAL,Common,1\n4,FLA,Common,1\n"},
    {"species-views.csv", "viewid,speciesid,familyid\n"
                          "1,10,F1\n1,11,F2\n"
                          "2,10,F1\n2,11,F2\n2,20,F3\n2,21,F3\n"
                          "3,10,F1\n4,1,F1\n4,2,F2\n"},
};

} // namespace

DataSet::DataSet() : dir(new_directory() + "/") {}

DataSet::~DataSet()
{
  std::error_code ignored; // a test may have removed its permissions
  fs::remove_all(dir, ignored);
}

void DataSet::file(const std::string& name, const std::string& text) const
{
  write_file(dir + name, text);
}

void DataSet::remove(const std::string& name) const
{
  fs::remove(dir + name);
}

void DataSet::minimal() const
{
  for (const auto& data_file : minimal_files)
    file(data_file.name, data_file.text);
}

ApplicationDir::ApplicationDir() : root(new_directory()), previous(fs::current_path().string())
{
  fs::create_directory_symlink(MAVO_RESOURCES, root + "/resources");
  for (const auto& data_file : minimal_files)
    file(data_file.name, data_file.text);
  fs::current_path(root);
}

ApplicationDir::~ApplicationDir()
{
  std::error_code ignored;
  fs::current_path(previous, ignored);
  fs::remove_all(root, ignored);
}

void ApplicationDir::file(const std::string& name, const std::string& text) const
{
  write_file(root + "/data-files/" + name, text);
}

void ApplicationDir::use_shipped_data() const
{
  fs::remove_all(root + "/data-files");
  fs::create_directory_symlink(MAVO_DATA_FILES, root + "/data-files");
}

void ApplicationDir::use_own_resources(const std::string& without_prefix) const
{
  fs::remove(root + "/resources");
  fs::create_directory(root + "/resources");
  for (const auto& entry : fs::directory_iterator(MAVO_RESOURCES))
    if (entry.path().filename().string().rfind(without_prefix, 0) != 0)
      fs::copy(entry.path(), root + "/resources");
}

std::string read_file(const std::string& path)
{
  std::ifstream in(path, std::ios::binary);
  EXPECT_TRUE(in.is_open()) << path;
  return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

void write_file(const std::string& path, const std::string& text)
{
  fs::create_directories(fs::path(path).parent_path());
  std::ofstream(path, std::ios::binary) << text;
}

bool file_exists(const std::string& path)
{
  return fs::exists(path);
}
