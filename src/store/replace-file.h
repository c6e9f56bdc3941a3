#pragma once

#include <cstddef>
#include <string>

// Makes `data` the whole content of the file at `path`, on the disk and not
// only on its way there, and returns the file's new entity tag. With an `etag`,
// an existing file must still have that one. Throws a Glib::Error; what was
// there before is then untouched, and no part of a new file stays.
std::string replace_file(const std::string& path, const char* data, std::size_t size,
                         const std::string& etag);
