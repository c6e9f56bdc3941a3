#pragma once

class DropDownBox;

// These functions fill the boxes of a survey's date. Their lists open as grids. The id of
// each box is 0 while nothing is chosen.
void fill_month_box(DropDownBox& box);
void fill_mday_box(DropDownBox& box); // 1 to 31 for every month
void fill_year_box(DropDownBox& box); // from this year down to the first that has surveys
