#pragma once

#include <string>
#include <vector>

// One line of comma-separated values with its line end, as RFC 4180 has it: CR LF, and quotes
// around a field that holds a comma, a quote or a line end. Fields are written as they are;
// nothing is put in front of a field that a spreadsheet would take for a formula.
std::string csv_row(const std::vector<std::string>& fields);
