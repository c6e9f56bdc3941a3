#pragma once

#include <glibmm/ustring.h>

#include <string>

class DataDefs;
class RegionInfo;

// The entries of a saved survey that its description contains. A missing survey type is 0; all
// other values are those of Survey.
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

// Reads the summary of the survey file at `path`. Throws the exceptions of read_survey_head().
// If `member_id` is not null, stores the member's number there as soon as it is known, even if
// the function then throws.
SurveySummary read_survey_summary(const std::string& path, int* member_id);

// Returns the description of a survey: one line of plain text with at most 300 characters. It
// has the member if `with_member`, and the survey type, date, start and zone if they are known.
// Throws a text if the reference data lack the subregion or the survey type.
Glib::ustring describe_survey(const SurveySummary& summary, const RegionInfo& regions,
                              const DataDefs& defs, bool with_member);
