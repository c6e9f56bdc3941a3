#pragma once

#include <cstddef>
#include <optional>
#include <string>

// What a path leads to, and what the file there holds.

// The absolute path with all symbolic links, "." and ".." resolved. What does
// not exist at its end is kept as it is written. Returns `path` itself if it
// cannot be resolved.
std::string resolved_path(const std::string& path);

// Whether both paths lead to one place, however they are spelled. The place
// itself may be empty. An empty path leads nowhere.
bool same_place(const std::string& path, const std::string& other);

// Whether `path` leads into `directory` or a directory below it.
bool leads_into(const std::string& path, const std::string& directory);

// Whether a file counts as lying in the directory of a state: its path begins with
// that of the directory, also if it is a link to elsewhere, or it leads there.
bool belongs_to(const std::string& path, const std::string& directory);

// Whether both paths lead to the same existing file: the same inode of the same
// device. So also if the file has two names.
bool same_file(const std::string& path, const std::string& other);

// The size in bytes up to which file_bytes() reads: many times the largest survey.
constexpr std::size_t largest_file_read = 64UL * 1024 * 1024;

// The content of a regular file of at most `limit` bytes; symbolic links are
// followed. Nothing if it is larger, is no regular file or cannot be read. Does
// not wait for a pipe.
std::optional<std::string> file_bytes(const std::string& path,
                                      std::size_t limit = largest_file_read);

// Whether a regular file is there that holds exactly `bytes`.
bool file_holds(const std::string& path, const std::string& bytes);
