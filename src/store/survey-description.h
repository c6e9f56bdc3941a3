#pragma once

#include <glibmm/ustring.h>

#include <string>

class DataDefs;
class RegionInfo;

// What a one-line description of a saved survey is made from.
struct SurveySummary {
  Glib::ustring member_id;
  Glib::ustring subregion;
  int survey_subtype = 0;
  Glib::ustring year = "0000";
  int month = 0;
  int mday = 0;
  int dive_start = 0;
  int zonecode = 0;
};

// Reads what the survey file at `path` says. Throws as parse_survey_file() does.
// With `member_id` the member's number is stored there as soon as its text is
// known, so that it stands even if something after it turns out to be wrong.
SurveySummary read_survey_summary(const std::string& path, int* member_id);

// The description, as one line of plain text of at most 300 characters: the member if
// `with_member`, then survey type, date, start and zone as far as they are known. Throws a text if
// the reference data do not know the subregion or the survey type.
Glib::ustring describe_survey(const SurveySummary& summary, const RegionInfo& regions,
                              const DataDefs& defs, bool with_member);
