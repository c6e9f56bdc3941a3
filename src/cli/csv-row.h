#pragma once

#include <string>
#include <vector>

// Returns one line of comma-separated values as RFC 4180 defines it: the line ends in CR LF,
// and quotes enclose a field that contains a comma, a quote or a line end. Does not escape
// fields that a spreadsheet would interpret as a formula.
std::string csv_row(const std::vector<std::string>& fields);
