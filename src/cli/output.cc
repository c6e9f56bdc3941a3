#include "cli/output.h"

#include <fcntl.h>
#include <glibmm/stringutils.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <string>

#include "cli/could-not-run.h"

namespace {

[[noreturn]] void refuse()
{
  throw CouldNotRun("cannot write to standard output: " + Glib::strerror(errno).raw());
}

// A write to a closed pipe is to fail rather than to end the process. Commands that the
// tool starts get back what is usual, as they would not with SIG_IGN.
void ignore_signal(int) {}

// Else a file that is opened later would get the number of a standard stream, and messages
// would be written into it.
void open_standard_streams()
{
  int opened = 0;
  while (opened >= 0 && opened <= STDERR_FILENO)
    opened = open("/dev/null", O_RDWR | O_CLOEXEC);
  if (opened >= 0)
    close(opened);
}

} // namespace

Output::Output()
{
  const int own = fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
  if (own >= 0)
    file.reset(fdopen(own, "w"));
  open_standard_streams();
  dup2(STDERR_FILENO, STDOUT_FILENO);
  std::signal(SIGPIPE, &ignore_signal);
}

void Output::write(std::string_view text)
{
  if (!file)
    errno = EBADF;
  if (!file || std::fwrite(text.data(), 1, text.size(), file.get()) != text.size())
    refuse();
}

void Output::flush()
{
  if (file && std::fflush(file.get()) != 0)
    refuse();
}
