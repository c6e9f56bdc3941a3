#pragma once

#include <filesystem>
#include <system_error>
#include <vector>

// These functions work on files and directories that an archive may have left in any state.

// Returns whether there is a file, a directory or a link at the path. The link may be dangling.
bool is_there(const std::filesystem::path& path);

// Returns whether the path is a directory that belongs to this user. A link to one is not.
bool is_own_directory(const std::filesystem::path& path);

// Gives this user all permissions on a directory that belongs to them. Does nothing to any
// other file. Ignores failures: the next operation on the directory reports them.
void open_up(const std::filesystem::path& directory);

// Returns the names in a directory. Sets `failure` if reading fails; then returns the names
// that were read before.
std::vector<std::filesystem::path> names_in(const std::filesystem::path& directory,
                                            std::error_code& failure);

// Removes a file, or a directory with everything in it, as far as possible. Follows no link.
void remove_tree(const std::filesystem::path& path);

// Waits until the disk has stored a directory and everything below it that can be read.
// Returns the first failure, or no error. Does nothing if the path is not a directory.
std::error_code flush_tree(const std::filesystem::path& directory);
