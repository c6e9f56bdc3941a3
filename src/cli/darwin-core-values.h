#pragma once

#include "store/survey.h"

#include <glibmm/ustring.h>

#include <string>

// Values of Darwin Core that take more than a look into a table.

// The date and the hour of a survey as ISO 8601, without a time zone: "2021-06-30T09:00". Of
// a date that is incomplete or not in the calendar only what can be right: "2021-06", "2021"
// or nothing. Midnight, the hour 24 of a survey, is "T00:00" of the same date.
std::string event_date(const Survey& survey);

// The ends of a depth class in metres, as its label tells them in brackets: "10-19 ft (3-6 m)".
// An end that the class lacks, as in "Snorkel" or "130 ft (40 m) or deeper", is empty.
struct DepthEnds {
  std::string lower;
  std::string upper;
};
DepthEnds depth_ends(const Glib::ustring& label);

// The minutes of a bottom time as typed; empty if it is no whole number.
std::string whole_minutes(const Glib::ustring& typed);
