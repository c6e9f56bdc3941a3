#include "ui/zone-tree.h"

#include "core/number.h"
#include "core/report.h"
#include "core/text.h"

#include <cstdio>
#include <string>

namespace {

constexpr Glib::ustring::size_type first_level_digits = 1;
constexpr Glib::ustring::size_type second_level_digits = 4;

// A zone whose descendants may follow. It has no row yet if it does not match
// the search itself.
struct OpenZone {
  Glib::ustring code;
  int id;
  const Glib::ustring* name;
  bool has_row;
};

const Glib::ustring& name_of(int id, const std::map<int, Glib::ustring>& names)
{
  static const Glib::ustring nameless;
  const auto found = names.find(id);
  return found == names.end() ? nameless : found->second;
}

bool contains_lower_case(const Glib::ustring& name, const std::string& lower_case_search)
{
  return name.lowercase().raw().find(lower_case_search) != std::string::npos;
}

void close_zones_beside(const Glib::ustring& code, std::vector<OpenZone>& open)
{
  while (!open.empty() && !is_zone_ancestor(open.back().code, code))
    open.pop_back();
}

void give_rows_to_all(std::vector<OpenZone>& open, std::vector<ZoneRow>& rows)
{
  int depth = 0;
  for (auto& zone : open) {
    if (!zone.has_row)
      rows.push_back({depth, zone.id, *zone.name});
    zone.has_row = true;
    ++depth;
  }
}

// The name of the zone that the first `digits` of `code` name, with what parts
// it from the next; empty if there is no such level above `code`.
Glib::ustring level_name(const Glib::ustring& code, Glib::ustring::size_type digits,
                         const std::map<int, Glib::ustring>& names)
{
  if (code.size() <= digits)
    return {};
  const auto found = names.find(to_int(code.substr(0, digits)));
  return found == names.end() ? Glib::ustring() : found->second + ", ";
}

} // namespace

bool is_zone_ancestor(const Glib::ustring& ancestor, const Glib::ustring& code)
{
  return ancestor.bytes() < code.bytes() &&
         code.raw().compare(0, ancestor.bytes(), ancestor.raw()) == 0;
}

bool is_zone_of_subregion(const Glib::ustring& code, const Glib::ustring& region,
                          const Glib::ustring& subregion)
{
  if (region.raw() != "PAC")
    return true;
  const bool is_californian = !code.empty() && code.raw().front() == '4';
  return is_californian != (subregion.raw() == "PNW");
}

std::vector<ZoneRow> zone_tree_rows(const std::vector<int>& ids,
                                    const std::map<int, Glib::ustring>& names,
                                    const Glib::ustring& region, const Glib::ustring& subregion,
                                    const Glib::ustring& search)
{
  const std::string wanted = trim_ws(search.lowercase()).raw();
  std::vector<ZoneRow> rows;
  std::vector<OpenZone> open;

  for (const int id : ids) {
    const Glib::ustring& name = name_of(id, names);
    if (debug_level >= 9)
      std::printf("%d: %s\n", id, name.c_str());

    const Glib::ustring code = std::to_string(id);
    close_zones_beside(code, open);
    if (!is_zone_of_subregion(code, region, subregion))
      continue;
    // One that does not match stays open, at whatever length, so that a match
    // below it can still show where it lies.
    if (!wanted.empty() && !contains_lower_case(name, wanted)) {
      open.push_back({code, id, &name, false});
      continue;
    }
    give_rows_to_all(open, rows);
    rows.push_back({static_cast<int>(open.size()), id, name});
    if (id < first_complete_zone)
      open.push_back({code, id, &name, true});
  }
  return rows;
}

Glib::ustring full_zone_name(const Glib::ustring& code, const std::map<int, Glib::ustring>& names)
{
  const auto zone = names.find(to_int(code));
  if (zone == names.end())
    return {};
  return level_name(code, first_level_digits, names) +
         level_name(code, second_level_digits, names) + zone->second;
}
