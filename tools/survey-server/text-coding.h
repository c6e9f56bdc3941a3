#pragma once

#include <string>
#include <vector>

// `text` cut at each `separator`; one empty piece if it is empty.
std::vector<std::string> split(const std::string& text, char separator);

// `text` with each %XX replaced by the byte that it stands for; other percent
// signs stay.
std::string decode_percent(const std::string& text);

// A whole number, digits only, of at most 9 of them. Throws std::invalid_argument.
int parse_number(const std::string& text);
