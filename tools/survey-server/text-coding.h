#pragma once

#include <string>
#include <vector>

// Returns the pieces of `text` between separators. An empty text has one empty piece.
std::vector<std::string> split(const std::string& text, char separator);

// Returns `text` with each %XX replaced by its byte. Does not change other percent signs.
std::string decode_percent(const std::string& text);

// Returns the value of 1 to 9 decimal digits. Throws std::invalid_argument for other texts.
int parse_number(const std::string& text);
