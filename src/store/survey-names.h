#pragma once

#include "data/reference-data.h"
#include "data/region-fish-info.h"
#include "store/survey.h"

#include <glibmm/ustring.h>

struct Region;

// The names behind the ids of surveys, in one data set. A name that the data lack, and that
// of an id that stands for no choice, is empty. Names of species can hold markup.
class SurveyNames
{
public:
  // The tables are not owned, and all of them have been read.
  explicit SurveyNames(const ReferenceData& the_data) : data(the_data) {}

  // Whether the data have the survey's location. Without it the ids have no meaning.
  bool knows_location(const Survey& survey) const;
  // The code of the region that the location belongs to.
  Glib::ustring region_code(const Survey& survey) const;
  Glib::ustring region(const Survey& survey) const;
  Glib::ustring location(const Survey& survey) const;
  // The type among those of the location; null for any other id.
  const Region* survey_type(const Survey& survey) const;
  // With the names of the levels above it.
  Glib::ustring zone(const Survey& survey) const;
  Glib::ustring habitat(const Survey& survey) const;
  Glib::ustring species_view(const Survey& survey) const;
  // Of a group of data-definitions.csv: "divestart", "visibility", "depth" or "current".
  Glib::ustring choice(const char* group, int value) const;

  // Null if the data of the survey's region have no such species, or no such family.
  const RegionFishInfo::Species* species(const Survey& survey, int id) const;
  const RegionFishInfo::Family* family_of(const Survey& survey, int species_id) const;
  // The label of the abundance class, in the list that the species uses.
  Glib::ustring abundance(const Survey& survey, const SpeciesSighting& sighting) const;

private:
  const RegionFishInfo* fish_of(const Survey& survey) const;

  const ReferenceData data;
};
