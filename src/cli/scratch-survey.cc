#include "cli/scratch-survey.h"

#include "core/thrown-text.h"
#include "store/read-survey.h"

#include <glibmm/miscutils.h>
#include <glibmm/stringutils.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>

#include "cli/could-not-run.h"
#include "cli/output-file.h"

ScratchSurvey::ScratchSurvey(const std::string& bytes)
    : path(Glib::build_filename(Glib::get_tmp_dir(), "mavo-surveys-XXXXXX"))
{
  const int number = mkstemp(path.data());
  const OwnedFile file(number < 0 ? nullptr : fdopen(number, "w"));
  const bool is_written = file &&
                          std::fwrite(bytes.data(), 1, bytes.size(), file.get()) == bytes.size() &&
                          std::fflush(file.get()) == 0;
  if (is_written)
    return;
  const int reason = errno;
  if (number >= 0)
    unlink(path.c_str());
  throw CouldNotRun("cannot use a temporary file: " + Glib::strerror(reason).raw());
}

ScratchSurvey::~ScratchSurvey()
{
  unlink(path.c_str());
}

std::string ScratchSurvey::fault() const
{
  try {
    read_survey(path);
    return {};
  } catch (...) {
    return thrown_text("unknown failure", "unknown failure").raw();
  }
}
