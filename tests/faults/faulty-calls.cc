#include "faults/faulty-calls.h"

#include <fcntl.h>
#include <linux/limits.h>
#include <sys/sendfile.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>
#include <cstdarg>
#include <utility>

// The linker prefers these definitions to those of the system library, also for the other
// libraries. Each one makes the system call itself.

namespace {

FaultyCalls* in_force = nullptr; // null if no calls are counted

std::string path_of(int descriptor)
{
  std::array<char, PATH_MAX> path;
  const std::string link = "/proc/self/fd/" + std::to_string(descriptor);
  const long length = syscall(SYS_readlinkat, AT_FDCWD, link.c_str(), path.data(), path.size());
  return length < 0 ? std::string() : std::string(path.data(), static_cast<std::size_t>(length));
}

// Returns the path of a file that a system call names relative to a directory, or an empty text if
// no calls are counted.
std::string path_at(int directory, const char* path)
{
  if (!in_force || !path)
    return {};
  return directory == AT_FDCWD || *path == '/' ? path : path_of(directory) + "/" + path;
}

bool fails(Call call, const std::string& path)
{
  return in_force && in_force->is_below(path) && in_force->count_call(call);
}

bool fails(Call call, const char* path)
{
  return fails(call, path_at(AT_FDCWD, path));
}

bool fails(Call call, int descriptor)
{
  return in_force && fails(call, path_of(descriptor));
}

int remove_at(int directory, const char* path, int flags)
{
  if (fails(Call::unlink, path_at(directory, path)))
    return -1;
  return static_cast<int>(syscall(SYS_unlinkat, directory, path, flags));
}

int open_at(int directory, const char* path, int flags, mode_t mode)
{
  const bool writes = (flags & O_ACCMODE) != O_RDONLY;
  const bool lists = !writes && (flags & O_DIRECTORY) != 0;
  if ((writes || lists) && fails(lists ? Call::list : Call::open, path_at(directory, path)))
    return -1;
  return static_cast<int>(syscall(SYS_openat, directory, path, flags, mode));
}

// Returns the mode argument, which exists only if the call may create a file.
mode_t mode_of(int flags, va_list arguments)
{
  const bool makes = (flags & O_CREAT) != 0 || (flags & O_TMPFILE) == O_TMPFILE;
  // NOLINTNEXTLINE(clang-analyzer-valist.Uninitialized): the analyzer misses the caller's va_start
  return makes ? static_cast<mode_t>(va_arg(arguments, unsigned)) : 0;
}

} // namespace

const char* name_of(Call call)
{
  constexpr std::array<const char*, number_of_calls> names = {
      "open", "write", "fsync", "link", "rename", "unlink", "mkdir", "close", "list"};
  return names[static_cast<std::size_t>(call)];
}

FaultyCalls::FaultyCalls(std::string directory_) : directory(std::move(directory_) + "/")
{
  in_force = this;
}

FaultyCalls::~FaultyCalls()
{
  in_force = nullptr;
}

void FaultyCalls::fail_once(Call call, int nth, int number)
{
  faults[static_cast<std::size_t>(call)] = {nth, number};
}

void FaultyCalls::fail_always(Call call, int number)
{
  always[static_cast<std::size_t>(call)] = number;
}

bool FaultyCalls::count_call(Call call)
{
  const auto index = static_cast<std::size_t>(call);
  const bool is_due = ++counts[index] == faults[index].nth;
  if (always[index] == 0 && !is_due)
    return false;
  errno = is_due ? faults[index].number : always[index];
  return true;
}

bool FaultyCalls::is_below(const std::string& path) const
{
  return (path + "/").compare(0, directory.size(), directory) == 0;
}

extern "C" {

int open(const char* path, int flags, ...)
{
  va_list arguments;
  va_start(arguments, flags);
  const mode_t mode = mode_of(flags, arguments);
  va_end(arguments);
  return open_at(AT_FDCWD, path, flags, mode);
}

int open64(const char* path, int flags, ...)
{
  va_list arguments;
  va_start(arguments, flags);
  const mode_t mode = mode_of(flags, arguments);
  va_end(arguments);
  return open_at(AT_FDCWD, path, flags, mode);
}

int openat(int directory, const char* path, int flags, ...)
{
  va_list arguments;
  va_start(arguments, flags);
  const mode_t mode = mode_of(flags, arguments);
  va_end(arguments);
  return open_at(directory, path, flags, mode);
}

ssize_t write(int descriptor, const void* data, size_t size)
{
  return fails(Call::write, descriptor) ? -1 : syscall(SYS_write, descriptor, data, size);
}

ssize_t sendfile(int to, int from, off_t* offset, size_t size) noexcept
{
  return fails(Call::write, to) ? -1 : syscall(SYS_sendfile, to, from, offset, size);
}

int fsync(int descriptor)
{
  return fails(Call::fsync, descriptor) ? -1 : static_cast<int>(syscall(SYS_fsync, descriptor));
}

int link(const char* old_path, const char* new_path) noexcept
{
  return linkat(AT_FDCWD, old_path, AT_FDCWD, new_path, 0);
}

int linkat(int from, const char* old_path, int to, const char* new_path, int flags) noexcept
{
  if (fails(Call::link, new_path))
    return -1;
  return static_cast<int>(syscall(SYS_linkat, from, old_path, to, new_path, flags));
}

int rename(const char* old_path, const char* new_path) noexcept
{
  if (fails(Call::rename, new_path))
    return -1;
  return static_cast<int>(syscall(SYS_renameat2, AT_FDCWD, old_path, AT_FDCWD, new_path, 0));
}

int renameat2(int from, const char* old_path, int to, const char* new_path, unsigned flags) noexcept
{
  if (fails(Call::rename, path_at(to, new_path)))
    return -1;
  return static_cast<int>(syscall(SYS_renameat2, from, old_path, to, new_path, flags));
}

int unlink(const char* path) noexcept
{
  return remove_at(AT_FDCWD, path, 0);
}

int unlinkat(int directory, const char* path, int flags) noexcept
{
  return remove_at(directory, path, flags);
}

int rmdir(const char* path) noexcept
{
  return remove_at(AT_FDCWD, path, AT_REMOVEDIR);
}

int remove(const char* path) noexcept
{
  const int result = remove_at(AT_FDCWD, path, 0);
  return result != 0 && errno == EISDIR ? remove_at(AT_FDCWD, path, AT_REMOVEDIR) : result;
}

int mkdir(const char* path, mode_t mode) noexcept
{
  if (fails(Call::mkdir, path))
    return -1;
  return static_cast<int>(syscall(SYS_mkdirat, AT_FDCWD, path, mode));
}

// A descriptor is closed even if close(2) fails.
int close(int descriptor)
{
  const bool failed = fails(Call::close, descriptor);
  const int number = errno;
  const long result = syscall(SYS_close, descriptor);
  if (!failed)
    return static_cast<int>(result);
  errno = number;
  return -1;
}
}
