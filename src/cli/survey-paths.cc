#include "cli/survey-paths.h"

#include "store/survey-file-name.h"
#include "store/survey-files.h"

#include <glibmm/miscutils.h>

#include <algorithm>
#include <filesystem>

#include "cli/could-not-run.h"

namespace fs = std::filesystem;

namespace {

class Collection
{
public:
  explicit Collection(std::vector<Finding>& the_left_out) : left_out(the_left_out) {}

  void add_below(const std::string& directory)
  {
    for (const auto& entry : fs::recursive_directory_iterator(directory)) {
      const std::string name = entry.path().filename().string();
      if (entry.is_directory() || name.rfind('.', 0) == 0)
        continue;
      if (is_survey_path(name))
        paths.push_back(entry.path().string());
      else {
        left_out.push_back(
            {entry.path().string(),
             {},
             "other-file",
             Severity::hint,
             "The file is left out: its name does not end like the name of a survey"});
      }
    }
  }
  void add(const std::string& argument)
  {
    try {
      if (fs::is_directory(argument))
        add_below(argument);
      else if (fs::exists(argument))
        paths.push_back(argument);
      else
        throw CouldNotRun(argument + " does not exist");
    } catch (const fs::filesystem_error& failure) {
      throw CouldNotRun("cannot read " + argument + ": " + failure.code().message());
    }
  }

  std::vector<std::string> paths;

private:
  std::vector<Finding>& left_out;
};

} // namespace

std::vector<std::string> survey_paths(const std::vector<std::string>& arguments,
                                      std::vector<Finding>& left_out)
{
  Collection found(left_out);
  for (const std::string& argument : arguments)
    found.add(argument);
  if (arguments.empty())
    found.add(default_survey_root());
  auto& paths = found.paths;
  std::sort(paths.begin(), paths.end());
  paths.erase(std::unique(paths.begin(), paths.end()), paths.end());
  return paths;
}

bool is_survey_path(const std::string& path)
{
  const std::string name = base_name(path);
  if (name.rfind('.', 0) == 0)
    return false;
  for (const std::string& end :
       {survey_file_extension, std::string(".MAVO_survey"), std::string(".xml")})
    if (name.size() > end.size() && name.compare(name.size() - end.size(), end.size(), end) == 0)
      return true;
  return false;
}

std::string state_of(const std::string& path)
{
  const std::string parent = "/" + Glib::path_get_basename(Glib::path_get_dirname(path));
  for (const auto state :
       {SurveyState::IN_PROGRESS, SurveyState::READY_TO_UPLOAD, SurveyState::UPLOADED})
    if (parent == directory_suffix(state))
      return parent.substr(1);
  return {};
}
