#pragma once

#include "store/survey.h"

#include <glibmm/ustring.h>

#include <string>

// Conversions of entries of a survey to values of Darwin Core.

// Returns the date and the hour of a survey in ISO 8601 without a time zone, such as
// "2021-06-30T09:00". If the date is incomplete or not in the calendar, returns only its
// valid first part: "2021-06", "2021" or an empty text. Midnight, the hour 24 of a survey, becomes
// "T00:00" of the same date.
std::string event_date(const Survey& survey);

// The limits of a depth class in metres, as digits. A limit that the class does not have is
// empty.
struct DepthEnds {
  std::string lower;
  std::string upper;
};
// Returns the limits in metres that the label of a depth class has in brackets, such as
// "10-19 ft (3-6 m)". "Snorkel" has no limits, "130 ft (40 m) or deeper" has no lower end.
DepthEnds depth_ends(const Glib::ustring& label);

// Returns the typed bottom time, in minutes, or an empty text if it is not a whole number.
std::string whole_minutes(const Glib::ustring& typed);
