#pragma once

#include "core/c-resource.h"

#include <cstddef>
#include <string>

// Writes all bytes at the present place of the file. False with errno if it failed.
bool write_all(const Descriptor& file, const char* data, std::size_t size);

// Waits until the disk has the file or directory. Throws a Gio::Error if it refuses what was
// written, in the words that the library has for its own writes.
void flush_or_throw(const Descriptor& file);
// The same for what lies at a path. What may not be read cannot be flushed.
void flush_or_throw(const std::string& path);
