#include "store/survey-file-name.h"

#include "core/number.h"
#include "store/survey.h"

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

// Returns the stem without the number that first_free_path() added.
std::string without_number(const std::string& stem)
{
  constexpr std::size_t most_digits = 3;
  const std::size_t hyphen = stem.rfind('-');
  if (hyphen == std::string::npos || hyphen == 0)
    return stem;
  const std::string number = stem.substr(hyphen + 1);
  const bool is_number = !number.empty() && number.size() <= most_digits &&
                         number.find_first_not_of("0123456789") == std::string::npos;
  return is_number ? stem.substr(0, hyphen) : stem;
}

} // namespace

SurveyFileNameParts file_name_parts(const Survey& survey)
{
  SurveyFileNameParts parts;
  parts.member_id = survey.member_id;
  parts.subregion = survey.subregion;
  parts.year = to_int(survey.year);
  parts.month = survey.month;
  parts.mday = survey.mday;
  parts.dive_start = dive_start_text(survey.dive_start);
  parts.zonecode = survey.zonecode;
  return parts;
}

Glib::ustring dive_start_text(int hour)
{
  constexpr int midnight = 24; // the hour after the last hour of the day
  if (hour == midnight || hour == -1)
    return "0000";
  std::array<char, 32> text{};
  std::snprintf(text.data(), text.size(), "%04lld", hour * 100LL);
  return text.data();
}

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
  return path.substr(path.rfind('/') + 1); // npos + 1 is 0
}

std::string renumbered_name(const std::string& name, unsigned int number)
{
  const std::size_t dot = name.rfind('.');
  const std::size_t end = dot == std::string::npos || dot == 0 ? name.size() : dot;
  std::string renumbered = without_number(name.substr(0, end));
  if (number > 0)
    renumbered.append("-").append(std::to_string(number));
  return renumbered + name.substr(end);
}
