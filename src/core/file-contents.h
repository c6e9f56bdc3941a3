#pragma once

#include "core/c-resource.h"

#include <glibmm/ustring.h>

#include <cstddef>
#include <optional>
#include <string>

// Returns all bytes of the file, or nullopt if GIO reports that it could not load the file
// without an error. Throws the Glib::Error that GIO throws.
std::optional<std::string> load_file(const std::string& path);

// Like load_file(), but returns a text, which is empty if the file could not be loaded.
Glib::ustring read_file_contents(const std::string& path);

// Returns the first bytes of an open regular file, at most `most` of them. Returns nullopt
// and sets errno if reading fails.
std::optional<std::string> read_bytes(const Descriptor& file, std::size_t most);
