#pragma once

#include <cstddef>
#include <optional>
#include <string>

// These functions compare the locations and the contents of files.

// Returns the absolute path with all symbolic links, "." and ".." resolved. Components at
// the end that do not exist stay as they are. Returns `path` if it cannot be resolved.
std::string resolved_path(const std::string& path);

// Returns whether both paths resolve to the same path. The file need not exist. Returns false
// if one of the paths is empty.
bool same_place(const std::string& path, const std::string& other);

// Returns whether `path` resolves to a path in `directory` or in a directory below it.
bool leads_into(const std::string& path, const std::string& directory);

// Returns whether a file belongs to the directory of a state. It does if its path begins with
// the directory's path, even if it is a link to another place, or if it resolves to a path
// there.
bool belongs_to(const std::string& path, const std::string& directory);

// Returns whether both paths lead to the same existing file: the same inode of the same
// device. A file may have two names.
bool same_file(const std::string& path, const std::string& other);

// The default limit of file_bytes(), in bytes. It is many times the size of the largest survey.
constexpr std::size_t largest_file_read = 64UL * 1024 * 1024;

// Returns the content of a regular file of at most `limit` bytes; follows symbolic links.
// Returns nullopt if the file is larger, is not a regular file or cannot be read. Does not
// wait for a pipe.
std::optional<std::string> file_bytes(const std::string& path,
                                      std::size_t limit = largest_file_read);

// Returns whether `path` is a regular file whose content is exactly `bytes`.
bool file_holds(const std::string& path, const std::string& bytes);
