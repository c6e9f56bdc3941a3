#include "ui/date-boxes.h"

#include "store/date-check.h"
#include "ui/drop-down-box.h"

#include <ctime>
#include <numeric>
#include <string>

namespace {

int current_year()
{
  const std::time_t now = std::time(nullptr);
  return 1900 + std::localtime(&now)->tm_year;
}

// Fills the box with numbers, which are also the labels.
void fill_with_numbers(DropDownBox& box, const std::vector<int>& numbers)
{
  std::vector<Glib::ustring> labels;
  labels.reserve(numbers.size());
  for (const int number : numbers)
    labels.emplace_back(std::to_string(number));
  box.init(numbers, labels, 0, 0);
}

} // namespace

void fill_month_box(DropDownBox& box)
{
  box.set_wrap_width(3); // quarters
  box.init({{1, "January"},
            {2, "February"},
            {3, "March"},
            {4, "April"},
            {5, "May"},
            {6, "June"},
            {7, "July"},
            {8, "August"},
            {9, "September"},
            {10, "October"},
            {11, "November"},
            {12, "December"}},
           0);
}

void fill_mday_box(DropDownBox& box)
{
  box.set_wrap_width(7);
  std::vector<int> days(31);
  std::iota(days.begin(), days.end(), 1);
  fill_with_numbers(box, days);
}

void fill_year_box(DropDownBox& box)
{
  box.set_wrap_width(5);
  std::vector<int> years;
  for (int year = current_year(); year >= first_survey_year; --year)
    years.push_back(year);
  fill_with_numbers(box, years);
}
