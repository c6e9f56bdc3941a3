#pragma once

#include <string>
#include <vector>

// Splits `text` at each `separator`. An empty text gives one empty piece.
std::vector<std::string> split(const std::string& text, char separator);

// Returns `text` with each %XX replaced by its byte. Other percent signs stay.
std::string decode_percent(const std::string& text);

// Returns a whole number of at most 9 digits. Throws std::invalid_argument for other texts.
int parse_number(const std::string& text);
