#include "store/survey-file-name.h"

#include <array>
#include <cstdio>

const std::string survey_file_extension = ".MAVO-Survey";

namespace {

std::string date_part(const SurveyFileNameParts& parts)
{
  std::array<char, 40> text{};
  std::snprintf(text.data(), text.size(), "%04d%02d%02d", parts.year, parts.month, parts.mday);
  return text.data();
}

} // namespace

std::string survey_base_name(const SurveyFileNameParts& parts)
{
  std::string name;
  if (!parts.member_id.empty())
    name = parts.member_id.raw() + "-";
  name += parts.subregion.raw() + "-" + date_part(parts) + "-" + parts.dive_start.raw();
  if (!parts.zonecode.empty())
    name += "-" + parts.zonecode.raw();
  return name;
}

std::string first_free_path(const std::string& stem, const std::string& own_path,
                            const std::function<bool(const std::string&)>& exists)
{
  std::string candidate = stem + survey_file_extension;
  for (unsigned int number = 1; candidate != own_path && exists(candidate); ++number) {
    std::printf("Tried filename %s but it exists\n", candidate.c_str());
    candidate.assign(stem).append("-").append(std::to_string(number));
    candidate += survey_file_extension;
  }
  std::printf("Selected filename %s\n", candidate.c_str());
  return candidate;
}

std::string base_name(const std::string& path)
{
  return path.substr(path.rfind('/') + 1); // npos + 1 is 0: all of it
}
