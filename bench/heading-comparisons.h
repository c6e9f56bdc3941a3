#pragma once

#include <string>
#include <vector>

// Returns how often Glib::ustring has compared a text with one of `headings` since the start.
// Each look-up in a map by heading does so at least once, unless the map is empty.
std::size_t heading_comparisons();
// Sets the headings. An empty list stops the count.
void count_comparisons_with(const std::vector<std::string>& headings);
