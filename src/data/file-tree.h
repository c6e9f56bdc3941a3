#pragma once

#include <filesystem>
#include <system_error>
#include <vector>

// What the install of data does with files and directories that an archive can have
// left in any state.

// Whether there is anything of that name, be it a link that leads nowhere.
bool is_there(const std::filesystem::path& path);

// Whether it is a directory that belongs to this user, and no link to one.
bool is_own_directory(const std::filesystem::path& path);

// Lets this user read, enter and change a directory of their own. Ignores failures: the
// next call on the directory reports them.
void open_up(const std::filesystem::path& directory);

// The names in a directory; what was read before a failure.
std::vector<std::filesystem::path> names_in(const std::filesystem::path& directory,
                                            std::error_code& failure);

// Removes all that can be removed of a file or directory. Follows no link.
void remove_tree(const std::filesystem::path& path);

// Waits until the disk has a directory and all below it, as far as that can be read.
// Does nothing if it is no directory.
std::error_code flush_tree(const std::filesystem::path& directory);
