#pragma once

#include <ctime>

// The first year that a survey can have. It is the earliest in the list of years.
constexpr int first_survey_year = 1993;

// The result of the check of a survey's date.
enum class DateVerdict { good, missing, invalid, in_future };

// Checks a local date. A part that is 0 is not chosen. The date is in the future if `now` is
// before the midnight at which that day begins.
DateVerdict judge_date(int year, int month, int mday, std::time_t now);
