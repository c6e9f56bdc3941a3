#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

// What a fuzz target offers: libFuzzer calls it with bytes of its own making,
// replay.cc with those of the corpus.
extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv);
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

// Ends the process as a crash, naming what should have held, if it does not.
void require(bool holds, const char* what);

std::string bytes_of(const std::uint8_t* data, std::size_t size);
// The pieces between line feeds, at least one.
std::vector<std::string> lines_of(const std::string& text);

// A directory for what the program reads from files, removed at the end.
class Scratch
{
public:
  Scratch();
  ~Scratch();
  Scratch(const Scratch&) = delete;
  Scratch& operator=(const Scratch&) = delete;

  void write(const std::string& name, const std::string& bytes) const;

  std::string dir; // ends in '/'
};
