#pragma once

class DropDownBox;

// Fill the boxes of a survey's date, whose lists open as grids. Each reads 0 while
// nothing is chosen.
void fill_month_box(DropDownBox& box);
void fill_mday_box(DropDownBox& box); // 1 to 31 whatever the month
void fill_year_box(DropDownBox& box); // from this year down to the first that has surveys
