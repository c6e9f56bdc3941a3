#include "data-archive.h"

#include <gio/gio.h>

#include <fstream>
#include <iterator>
#include <vector>

#include "answer.h"
#include "c-owner.h"

namespace {

// Returns the output of a program for `input`. Does not use a shell.
std::string output_of(std::vector<const char*> arguments, const std::string& input)
{
  const std::string name = arguments.front();
  arguments.push_back(nullptr);
  const auto pipes =
      static_cast<GSubprocessFlags>(G_SUBPROCESS_FLAGS_STDIN_PIPE | G_SUBPROCESS_FLAGS_STDOUT_PIPE);
  const GObjectPtr<GSubprocess> child(g_subprocess_newv(arguments.data(), pipes, nullptr));
  if (!child)
    throw Refusal{500, "Cannot run " + name};

  const GBytesPtr to_child(g_bytes_new(input.data(), input.size()));
  GBytes* from_child = nullptr;
  const bool talked =
      g_subprocess_communicate(child.get(), to_child.get(), nullptr, &from_child, nullptr, nullptr);
  const GBytesPtr output(from_child);
  if (!talked || !g_subprocess_get_successful(child.get()))
    throw Refusal{500, name + " failed"};

  gsize size = 0;
  const auto* const bytes = static_cast<const char*>(g_bytes_get_data(output.get(), &size));
  return {bytes, size};
}

std::string read_archive(const std::string& path)
{
  std::ifstream file(path, std::ios::binary);
  if (!file)
    throw Refusal{500, "Cannot read " + path};
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

} // namespace

std::string pack_data_set(const std::string& dir)
{
  // The directory may have any name, but the archive's directory has a fixed one. Targets of
  // links stay unchanged.
  return output_of({"tar", "-C", dir.c_str(), "--transform=flags=rSH;s,^\\.,data-files,",
                    "--use-compress-program=bzip2", "-cf", "-", "."},
                   "");
}

std::string damaged_archive(const std::string& dir, const std::string& damage)
{
  const std::string file_word = "FILE:";
  if (damage.rfind(file_word, 0) == 0)
    return read_archive(damage.substr(file_word.size()));
  if (damage == "empty")
    return "";
  if (damage == "not-bzip2")
    return "These are not compressed data.\n";
  if (damage == "not-tar")
    return output_of({"bzip2", "-c"}, "This is not an archive.\n");
  const std::string whole = pack_data_set(dir);
  return whole.substr(0, whole.size() / 2);
}
