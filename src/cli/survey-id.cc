#include "cli/survey-id.h"

#include <glibmm/checksum.h>

#include <array>
#include <cstdint>

namespace {

// The project's own namespace of UUIDs. UUIDs are equal only if namespace and name are equal.
constexpr std::array<std::uint8_t, 16> surveys_namespace = {
    0x5f, 0x1c, 0x0e, 0x3a, 0x9d, 0x42, 0x4b, 0x77, 0x8a, 0x21, 0x6e, 0xd3, 0x30, 0xb5, 0xc9, 0x14};

void add(std::string& text, const char* name, const Glib::ustring& value)
{
  if (!value.empty())
    text += std::string(name) + "=" + std::to_string(value.bytes()) + ":" + value.raw() + "\n";
}

void add(std::string& text, const char* name, int value, int none)
{
  if (value != none)
    text += std::string(name) + "=" + std::to_string(value) + "\n";
}

void add_place_and_time(std::string& text, const Survey& survey)
{
  add(text, "member_id", survey.member_id);
  add(text, "last_name", survey.last_name);
  add(text, "subregion", survey.subregion);
  add(text, "survey_subtype", survey.survey_subtype, -1);
  if (survey.year.raw() != "0000") // "0000" means that no year is chosen
    add(text, "year", survey.year);
  add(text, "month", survey.month, 0);
  add(text, "mday", survey.mday, 0);
  add(text, "dive_start", survey.dive_start, -1);
  add(text, "zonecode", survey.zonecode);
}

void add_conditions(std::string& text, const Survey& survey)
{
  add(text, "surface_temp", survey.surface_temp);
  add(text, "bottom_temp", survey.bottom_temp);
  add(text, "temp_units", survey.temp_units.empty() ? "F" : survey.temp_units);
  add(text, "bottom_time", survey.bottom_time);
  add(text, "confirmed", survey.bottom_time_confirmed ? 1 : 0, 0);
  add(text, "visibility", survey.visibility, -1);
  add(text, "avg_depth", survey.avg_depth, -1);
  add(text, "max_depth", survey.max_depth, -1);
  add(text, "current", survey.current, -1);
  add(text, "habitat", survey.habitat, -1);
  add(text, "species_view", survey.species_view, -1);
}

// Returns the hexadecimal digits of a checksum as a name-based UUID.
std::string uuid_of(std::string digits)
{
  constexpr char version = '5';
  static const char* const variants = "89ab"; // the two highest bits are 10
  digits.resize(32);
  digits[12] = version;
  digits[16] = variants[std::stoi(digits.substr(16, 1), nullptr, 16) % 4];
  for (const std::size_t place : {20U, 16U, 12U, 8U})
    digits.insert(place, "-");
  return digits;
}

} // namespace

std::string survey_id(const Survey& survey)
{
  std::string text(surveys_namespace.begin(), surveys_namespace.end());
  add_place_and_time(text, survey);
  add_conditions(text, survey);
  for (const SpeciesSighting& sighting : survey.species)
    if (sighting.abun != 0)
      add(text, ("species " + std::to_string(sighting.id)).c_str(), sighting.abun, 0);
  return uuid_of(Glib::Checksum::compute_checksum(Glib::Checksum::CHECKSUM_SHA1, text));
}
