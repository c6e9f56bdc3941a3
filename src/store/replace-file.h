#pragma once

#include <cstddef>
#include <string>

// Makes `data` the whole content of the file at `path`, on the disk and not
// only on its way there, and returns the file's new entity tag. With an `etag`,
// an existing file must still have that one. Throws a Glib::Error. No part of a
// new file then stays. An existing file then holds what it held before; only if
// the disk refuses to flush its directory, it holds `data`.
std::string replace_file(const std::string& path, const char* data, std::size_t size,
                         const std::string& etag);

// The entity tag that the file has now. Throws a Glib::Error if there is none.
std::string entity_tag(const std::string& path);
