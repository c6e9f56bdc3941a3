#pragma once

#include "data/reference-data.h"
#include "data/region-fish-info.h"
#include "store/survey.h"

#include <glibmm/ustring.h>

struct Region;

// Finds the names for the ids of surveys in one data set. Returns an empty name if the data lack
// it, or if the id means that nothing is chosen. Names can contain markup.
class SurveyNames
{
public:
  // REQUIRES: all tables have been read, and they outlive this object.
  explicit SurveyNames(const ReferenceData& the_data) : data(the_data) {}

  // Returns whether the data have the survey's location. Without it, the ids have no meaning.
  bool knows_location(const Survey& survey) const;
  // Returns the code of the region to which the location belongs.
  Glib::ustring region_code(const Survey& survey) const;
  Glib::ustring region(const Survey& survey) const;
  Glib::ustring location(const Survey& survey) const;
  // Returns the survey type, or null if it is not a type of the location.
  const Region* survey_type(const Survey& survey) const;
  // Returns the name of the zone after the names of its ancestors.
  Glib::ustring zone(const Survey& survey) const;
  Glib::ustring habitat(const Survey& survey) const;
  Glib::ustring species_view(const Survey& survey) const;
  // Returns the label of a choice. `group` is a group of data-definitions.csv: "divestart",
  // "visibility", "depth" or "current".
  Glib::ustring choice(const char* group, int value) const;

  // Return the species or its family in the survey's region, or null if the data lack it.
  const RegionFishInfo::Species* species(const Survey& survey, int id) const;
  const RegionFishInfo::Family* family_of(const Survey& survey, int species_id) const;
  // Returns the label of the abundance class from the list for this species.
  Glib::ustring abundance(const Survey& survey, const SpeciesSighting& sighting) const;

private:
  const RegionFishInfo* fish_of(const Survey& survey) const;

  const ReferenceData data;
};
