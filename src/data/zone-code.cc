#include "data/zone-code.h"

#include "core/number.h"

namespace {

constexpr Glib::ustring::size_type first_level_digits = 1;
constexpr Glib::ustring::size_type second_level_digits = 4;
constexpr Glib::ustring::size_type complete_digits = 8;
constexpr int first_complete_zone = 10'000'000; // the smallest number with eight digits

// Returns the name of the ancestor whose code is the first `digits` characters of `code`, followed
// by a comma and a blank. Returns an empty text if there is no such ancestor.
Glib::ustring level_name(const Glib::ustring& code, Glib::ustring::size_type digits,
                         const std::map<int, Glib::ustring>& names)
{
  if (code.size() <= digits)
    return {};
  const auto found = names.find(to_int(code.substr(0, digits)));
  return found == names.end() ? Glib::ustring() : found->second + ", ";
}

} // namespace

bool is_complete_zone(const Glib::ustring& code)
{
  return code.size() >= complete_digits;
}

bool is_complete_zone(int id)
{
  return id >= first_complete_zone;
}

Glib::ustring full_zone_name(const Glib::ustring& code, const std::map<int, Glib::ustring>& names)
{
  const auto zone = names.find(to_int(code));
  if (zone == names.end())
    return {};
  return level_name(code, first_level_digits, names) +
         level_name(code, second_level_digits, names) + zone->second;
}
