#pragma once

#include "core/c-resource.h"

#include <cstddef>
#include <string>

// Writes all bytes at the current position of the file. Returns false and sets errno if that
// fails.
bool write_all(const Descriptor& file, const char* data, std::size_t size);

// Waits until the disk has stored the file or directory. Throws a Gio::Error if that fails, with
// the text that the library uses for failures of its own writes.
void flush_or_throw(const Descriptor& file);
// Does the same for the file or directory at `path`. Does nothing if it cannot be opened for
// reading.
void flush_or_throw(const std::string& path);
