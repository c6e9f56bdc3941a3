#pragma once

#include "core/c-resource.h"

#include <system_error>

// Waits until the disk has what was written to an open file or directory. Returns the error
// if the disk refuses it, so that data are lost: EIO, ENOSPC or EDQUOT. Other errors come
// from file systems that cannot flush such a file (fsync(2), EINVAL), which is no worse
// for it.
std::error_code flush_to_disk(const Descriptor& file);
