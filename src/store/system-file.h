#pragma once

#include <sys/stat.h>

#include <array>
#include <cstddef>
#include <ctime>
#include <string>

// Operations on files for which Linux has better calls than POSIX. system-file-linux.cc defines
// them for Linux, and system-file-posix.cc for other systems and for the CMake option
// MAVO_PLAIN_POSIX. docs/reliability.md describes the guarantees of both.

// Creates a file with the content `data`, so that other programs never see an incomplete file.
// Never replaces an existing file. Returns false if the file cannot be created, for example on a
// full disk or a file system without the necessary functions. Throws a Gio::Error if the disk
// reports that it could not store the data.
bool make_whole_file(const std::string& path, const char* data, std::size_t size);

// Renames a file if `target` does not exist. Returns false and sets errno if that fails: to
// EEXIST if `target` exists. On a file system that cannot rename without replacing, errno is an
// error after which a copy can succeed.
bool rename_to_free_name(const std::string& path, const std::string& target);

// Returns the times of the last access and the last change of a file, for futimens().
std::array<timespec, 2> times_of(const struct stat& status);
