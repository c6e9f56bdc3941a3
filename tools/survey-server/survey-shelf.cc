#include "survey-shelf.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "answer.h"

namespace fs = std::filesystem;

namespace {

// A temporary file, which exists until its bytes have their final name.
class ScratchFile
{
public:
  explicit ScratchFile(const std::string& dir) : path(dir + "/.upload-XXXXXX")
  {
    const int descriptor = mkstemp(path.data());
    if (descriptor < 0)
      throw Refusal{500, std::string("The survey cannot be kept: ") + std::strerror(errno)};
    fchmod(descriptor, S_IRUSR | S_IWUSR | S_IRGRP | S_IROTH);
    close(descriptor);
  }
  ~ScratchFile() { unlink(path.c_str()); }
  ScratchFile(const ScratchFile&) = delete;
  ScratchFile& operator=(const ScratchFile&) = delete;

  void write(const std::string& bytes) const
  {
    std::ofstream file(path, std::ios::binary);
    file << bytes << std::flush;
    if (!file)
      throw Refusal{507, "There is no room for the survey."};
  }

  std::string path;
};

std::string numbered(const std::string& name, int number)
{
  const fs::path path(name);
  return number == 1
             ? name
             : path.stem().string() + "-" + std::to_string(number) + path.extension().string();
}

bool has_contents(const std::string& path, const std::string& bytes)
{
  std::ifstream file(path, std::ios::binary);
  return file && std::string(std::istreambuf_iterator<char>(file),
                             std::istreambuf_iterator<char>()) == bytes;
}

} // namespace

std::string keep_survey(const std::string& dir, const ReceivedSurvey& survey)
{
  const ScratchFile scratch(dir);
  scratch.write(survey.bytes);
  for (int number = 1;; ++number) {
    std::string name = numbered(survey.name, number);
    const std::string path = fs::path(dir) / name;
    const bool is_new = link(scratch.path.c_str(), path.c_str()) == 0;
    if (!is_new && errno != EEXIST)
      throw Refusal{errno == ENAMETOOLONG ? 400 : 500,
                    std::string("The survey cannot be kept: ") + std::strerror(errno)};
    if (is_new || has_contents(path, survey.bytes))
      return name;
  }
}
