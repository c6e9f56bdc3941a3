#pragma once

#include <sys/stat.h>

#include <array>
#include <cstddef>
#include <ctime>
#include <string>

// Work on files for which Linux has better calls than POSIX. One of two sources defines it:
// system-file-linux.cc, and system-file-posix.cc for other systems and for the CMake option
// MAVO_PLAIN_POSIX. docs/reliability.md says what each promises.

// Makes a file that gets its name last: whoever looks, and whatever happens meanwhile, it
// is there whole or not at all, and never over an existing file. False if it could not be
// made, for want of space or on a file system that lacks what is needed. Throws a
// Gio::Error if the disk refuses what was written.
bool make_whole_file(const std::string& path, const char* data, std::size_t size);

// Renames a file unless something has the name `target`. False with errno if it failed:
// EEXIST for a name that is taken; on a file system that cannot keep an existing file, an
// error that a copy does not have.
bool rename_to_free_name(const std::string& path, const std::string& target);

// The times of the last reading and the last change of a file, as futimens() takes them.
std::array<timespec, 2> times_of(const struct stat& status);
