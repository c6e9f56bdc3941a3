#pragma once

#include <ctime>

// The first year that a survey can be of: the list of years begins with it.
constexpr int first_survey_year = 1993;

// What can be said of a survey's date.
enum class DateVerdict { good, missing, invalid, in_future };

// Judges a local date against `now`; a part that is 0 was not chosen. A day
// counts as in the future until its first midnight has passed.
DateVerdict judge_date(int year, int month, int mday, std::time_t now);
