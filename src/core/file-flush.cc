#include "core/file-flush.h"

#include <cerrno>

std::error_code flush_to_disk(const Descriptor& file)
{
  int result = fsync(file.number);
  while (result != 0 && errno == EINTR)
    result = fsync(file.number);
  const bool is_loss = result != 0 && (errno == EIO || errno == ENOSPC || errno == EDQUOT);
  return is_loss ? std::error_code(errno, std::system_category()) : std::error_code();
}
