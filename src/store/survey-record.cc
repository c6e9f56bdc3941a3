#include "store/survey-record.h"

#include <utility>

SurveyData& SurveyData::operator=(SurveyData&& other) noexcept(false)
{
  if (this == &other)
    return *this;

  region = other.region;
  subregion = other.subregion;
  region_fish = other.region_fish;
  subregion_info = other.subregion_info;
  survey_subtype = other.survey_subtype;
  abundance_choices = other.abundance_choices;
  species_view_id = other.species_view_id;

  filename = std::move(other.filename);
  file_etag = std::move(other.file_etag);

  xml_current = other.xml_current;
  xml_last_saved = other.xml_last_saved;
  xml_pristine = other.xml_pristine;

  show_fish = other.show_fish;
  show_inverts = other.show_inverts;
  show_common_name = other.show_common_name;
  show_scientific_name = other.show_scientific_name;
  show_spanish_name = other.show_spanish_name;
  survey_complete = other.survey_complete;
  is_uploaded = other.is_uploaded;

  abundances = std::move(other.abundances);
  other.abundances.clear();

  unwritten_path = std::move(other.unwritten_path);
  written_text = std::move(other.written_text);
  unlisted_year = other.unlisted_year;
  return *this;
}
