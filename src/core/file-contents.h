#pragma once

#include "core/c-resource.h"

#include <glibmm/ustring.h>

#include <cstddef>
#include <optional>
#include <string>

// The whole file's bytes. None if the library says that it could not load it; a Glib::Error
// that it throws passes through.
std::optional<std::string> load_file(const std::string& path);

// The same as text, which is empty if the file could not be loaded.
Glib::ustring read_file_contents(const std::string& path);

// The bytes of an open regular file from its start, but at most `most`. None if reading
// fails; errno then tells why.
std::optional<std::string> read_bytes(const Descriptor& file, std::size_t most);
