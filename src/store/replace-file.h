#pragma once

#include <cstddef>
#include <string>

// An entity tag that no file has. With it, replace_file() requires that the file does not exist.
constexpr const char* no_existing_file = "none";

// Replaces the content of the file at `path` with `data`, or creates the file. Waits until the
// disk has stored it and returns the file's new entity tag. If `etag` is not empty, an existing
// file must have this tag. Throws a Glib::Error on failure. Then a new file does not exist, and
// an existing file has its previous content. Exception: if only the flush of the directory fails,
// an existing file has the content `data`.
std::string replace_file(const std::string& path, const char* data, std::size_t size,
                         const std::string& etag);

// Returns the current entity tag of the file. Throws a Glib::Error if the file has none or does
// not exist.
std::string entity_tag(const std::string& path);
