#pragma once

#include <string>

// The archive by which a data set is published: a tar file compressed by bzip2, with the
// set's files, and nothing else, in a directory data-files. The same contents of these
// files give the same bytes. `dir` ends in a slash and holds a set that can be read
// completely. Throws a text if a file cannot be read or the archive is larger than the
// program accepts.
std::string pack_data_set(const std::string& dir);
