#include "cli/output-file.h"

#include <glibmm/stringutils.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>

#include "cli/could-not-run.h"
#include "cli/output.h"

namespace {

// Returns the permissions of a new file. mkstemp() sets more restrictive ones.
mode_t usual_mode()
{
  const mode_t mask = umask(0);
  umask(mask);
  return 0666 & ~mask;
}

bool is_special(const struct stat& status)
{
  return !S_ISREG(status.st_mode) && !S_ISLNK(status.st_mode);
}

} // namespace

OutputFile::OutputFile(const std::string& the_path, Existing the_existing, Output& the_output)
    : path(the_path), existing(the_existing), output(the_output)
{
  struct stat status = {};
  if (path.empty())
    return;
  const bool exists = stat(path.c_str(), &status) == 0;
  if (exists && existing == Existing::refuse) {
    errno = EEXIST;
    fail();
  }
  if (exists && is_special(status))
    file.reset(std::fopen(path.c_str(), "we"));
  else
    open_scratch();
  if (!file)
    fail();
}

OutputFile::~OutputFile()
{
  if (!scratch.empty())
    unlink(scratch.c_str());
}

void OutputFile::open_scratch()
{
  std::string name = path + ".XXXXXX";
  const int number = mkstemp(name.data());
  if (number < 0)
    return;
  scratch = name;
  fchmod(number, usual_mode());
  file.reset(fdopen(number, "w"));
}

void OutputFile::fail() const
{
  const int number = errno;
  throw CouldNotRun("cannot write " + path + ": " + Glib::strerror(number).raw());
}

void OutputFile::write(const char* bytes, std::size_t size)
{
  if (!file)
    output.write({bytes, size});
  else if (std::fwrite(bytes, 1, size, file.get()) != size)
    fail();
}

void OutputFile::flush()
{
  if (!file)
    output.flush();
  else if (std::fflush(file.get()) != 0)
    fail();
  if (!scratch.empty() && fsync(fileno(file.get())) != 0)
    fail();
}

void OutputFile::commit()
{
  flush();
  if (scratch.empty())
    return;
  struct stat status = {};
  if (existing == Existing::refuse && lstat(path.c_str(), &status) == 0) {
    errno = EEXIST; // another program has created it in the meantime
    fail();
  }
  if (std::rename(scratch.c_str(), path.c_str()) != 0)
    fail();
  scratch.clear();
}
