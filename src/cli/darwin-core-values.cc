#include "cli/darwin-core-values.h"

#include "core/number.h"
#include "core/text.h"

#include <glibmm/date.h>

#include <array>
#include <cstdio>
#include <regex>

namespace {

template<typename... Numbers>
std::string formatted(const char* format, Numbers... numbers)
{
  std::array<char, 64> text{};
  std::snprintf(text.data(), text.size(), format, numbers...);
  return text.data();
}

bool is_calendar_day(int year, int month, int mday)
{
  return mday >= 1 && mday <= 31 &&
         Glib::Date::valid_dmy(static_cast<Glib::Date::Day>(mday),
                               static_cast<Glib::Date::Month>(month),
                               static_cast<Glib::Date::Year>(year));
}

} // namespace

std::string event_date(const Survey& survey)
{
  constexpr int last_hour = 24; // midnight
  const int year = to_int(survey.year);
  const bool has_year = year >= 1 && year <= 9999;
  const bool has_month = has_year && survey.month >= 1 && survey.month <= 12;
  const bool has_day = has_month && is_calendar_day(year, survey.month, survey.mday);
  const bool has_hour = has_day && survey.dive_start >= 0 && survey.dive_start <= last_hour;
  std::string date = has_year ? formatted("%04d", year) : "";
  if (has_month)
    date += formatted("-%02d", survey.month);
  if (has_day)
    date += formatted("-%02d", survey.mday);
  if (has_hour)
    date += formatted("T%02d:00", survey.dive_start % last_hour);
  return date;
}

DepthEnds depth_ends(const Glib::ustring& label)
{
  static const std::regex range(R"(\(([0-9.]+)\s*(?:-|\xE2\x80\x93)\s*([0-9.]+)\s*m\))");
  static const std::regex single(R"(\(([0-9.]+)\s*m\))");
  static const std::regex only_upper("less than|under|up to", std::regex::icase);
  static const std::regex only_lower("more than|over|deeper", std::regex::icase);
  constexpr std::size_t longest_label = 200; // bytes; std::regex recurses for each character
  const std::string& text = label.raw();
  std::smatch found;
  if (text.size() > longest_label)
    return {};
  if (std::regex_search(text, found, range))
    return {found[1], found[2]};
  if (!std::regex_search(text, found, single))
    return {};
  if (std::regex_search(text, only_upper))
    return {"", found[1]};
  if (std::regex_search(text, only_lower))
    return {found[1], ""};
  return {found[1], found[1]};
}

std::string whole_minutes(const Glib::ustring& typed)
{
  const std::string minutes = trim_ws(typed).raw();
  const bool is_number =
      !minutes.empty() && minutes.find_first_not_of("0123456789") == std::string::npos;
  return is_number ? minutes : "";
}
