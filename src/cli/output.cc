#include "cli/output.h"

#include <fcntl.h>
#include <glibmm/stringutils.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <string>

#include "cli/could-not-run.h"

namespace {

[[noreturn]] void fail()
{
  throw CouldNotRun("cannot write to standard output: " + Glib::strerror(errno).raw());
}

// Makes a write to a closed pipe fail instead of ending the process. Unlike SIG_IGN, child
// processes do not inherit a handler.
void ignore_signal(int) {}

// Opens closed standard streams. Otherwise, a file that is opened later would get the number
// of a standard stream, and messages would overwrite it.
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
    fail();
}

void Output::flush()
{
  if (file && std::fflush(file.get()) != 0)
    fail();
}
