// replay DIRECTORY: runs the linked fuzz target with every file of a corpus, so that every test
// run repeats the inputs that fuzzing found. Fails if an input crashes, or if the directory has
// no file.
#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "target.h"

int main(int argc, char** argv)
{
  if (argc != 2) {
    std::fprintf(stderr, "usage: %s DIRECTORY\n", argv[0]);
    return 2;
  }
  LLVMFuzzerInitialize(&argc, &argv);
  std::vector<std::filesystem::path> paths;
  for (const auto& entry : std::filesystem::directory_iterator(argv[1]))
    paths.push_back(entry.path());
  std::sort(paths.begin(), paths.end());

  for (const auto& path : paths) {
    std::fprintf(stderr, "%s\n", path.c_str()); // the last line is the input that crashed
    std::ifstream file(path, std::ios::binary);
    const std::string bytes(std::istreambuf_iterator<char>(file), {});
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
  }
  std::fprintf(stderr, "%zu files replayed\n", paths.size());
  return paths.empty() ? 1 : 0;
}
