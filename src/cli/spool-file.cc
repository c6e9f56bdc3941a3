#include "cli/spool-file.h"

#include <glibmm/miscutils.h>
#include <glibmm/stringutils.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>

#include "cli/could-not-run.h"

namespace {

[[noreturn]] void fail()
{
  const int number = errno;
  throw CouldNotRun("cannot use a temporary file: " + Glib::strerror(number).raw());
}

} // namespace

SpoolFile::SpoolFile()
{
  std::string name = Glib::build_filename(Glib::get_tmp_dir(), "mavo-surveys-XXXXXX");
  const int number = mkstemp(name.data());
  if (number < 0)
    fail();
  unlink(name.c_str());
  file.reset(fdopen(number, "w+"));
  if (!file)
    fail();
}

void SpoolFile::write(const std::string& bytes)
{
  if (std::fwrite(bytes.data(), 1, bytes.size(), file.get()) != bytes.size())
    fail();
}

std::int64_t SpoolFile::rewind()
{
  if (std::fflush(file.get()) != 0)
    fail();
  const off_t size = ftello(file.get());
  if (size < 0 || fseeko(file.get(), 0, SEEK_SET) != 0)
    fail();
  return size;
}

std::string SpoolFile::read(std::size_t most)
{
  std::string bytes(most, '\0');
  bytes.resize(std::fread(bytes.data(), 1, most, file.get()));
  if (std::ferror(file.get()) != 0)
    fail();
  return bytes;
}
