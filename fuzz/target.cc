#include "target.h"

#include <giomm/init.h>
#include <glibmm/init.h>

#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>

namespace fs = std::filesystem;

int LLVMFuzzerInitialize(int*, char***)
{
  std::setlocale(LC_ALL, "C.UTF-8");
  Glib::init();
  Gio::init();
  return 0;
}

void require(bool holds, const char* what)
{
  if (holds)
    return;
  std::fprintf(stderr, "does not hold: %s\n", what);
  std::abort();
}

std::string bytes_of(const std::uint8_t* data, std::size_t size)
{
  return {data, data + size};
}

std::vector<std::string> lines_of(const std::string& text)
{
  std::vector<std::string> lines;
  std::size_t start = 0;
  for (auto end = text.find('\n'); end != std::string::npos; end = text.find('\n', start)) {
    lines.push_back(text.substr(start, end - start));
    start = end + 1;
  }
  lines.push_back(text.substr(start));
  return lines;
}

Scratch::Scratch()
{
  dir = (fs::temp_directory_path() / "mavo-fuzz-XXXXXX").string();
  require(mkdtemp(dir.data()), "a directory can be made");
  dir += "/";
}

Scratch::~Scratch()
{
  std::error_code ignored;
  fs::remove_all(dir, ignored);
}

void Scratch::write(const std::string& name, const std::string& bytes) const
{
  std::ofstream file(dir + name, std::ios::binary | std::ios::trunc);
  file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  require(file.flush().good(), "a file can be written");
}
