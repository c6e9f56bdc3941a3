#pragma once

#include "core/c-resource.h"

#include <system_error>

// Waits until the disk has stored all data of an open file or directory. Returns EIO,
// ENOSPC or EDQUOT if it could not store them, otherwise no error. Ignores other errors of
// fsync(2), such as EINVAL: they mean that the file system cannot flush this kind of file.
std::error_code flush_to_disk(const Descriptor& file);
