#pragma once

#include <ctime>

// What can be said of a survey's date.
enum class DateVerdict { good, missing, invalid, in_future };

// Judges a local date against `now`; a part that is 0 was not chosen. A day
// counts as in the future until its first midnight has passed.
DateVerdict judge_date(int year, int month, int mday, std::time_t now);
