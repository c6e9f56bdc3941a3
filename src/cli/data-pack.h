#pragma once

#include <string>

// Returns the archive for the publication of the data set in `dir`, which ends in a slash. The
// archive is a tar file compressed by bzip2. It contains only the files of the set, in a
// directory data-files. Files with the same contents result in the same bytes. Throws a
// Glib::ustring with the reason if a file cannot be read or the archive is larger than the
// program accepts. REQUIRES: the program can read the set completely.
std::string pack_data_set(const std::string& dir);
