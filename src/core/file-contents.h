#pragma once

#include "core/c-resource.h"

#include <glibmm/ustring.h>

#include <cstddef>
#include <optional>
#include <string>

// Returns all bytes of the file. Throws a Glib::Error if GIO reports one. Returns nullopt if
// GIO fails to load the file and reports no error.
std::optional<std::string> load_file(const std::string& path);

// Like load_file(), but returns a text, which is empty if the file could not be loaded.
Glib::ustring read_file_contents(const std::string& path);

// Returns the first bytes of an open regular file, at most `most` of them. Returns nullopt
// and sets errno if reading fails.
std::optional<std::string> read_bytes(const Descriptor& file, std::size_t most);
