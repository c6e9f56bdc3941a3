#pragma once

#include <glib.h>
#include <unistd.h>

#include <cstdio>
#include <memory>

// Owners of what C libraries hand out, released on every path.

struct PipeClose {
  void operator()(FILE* pipe) const { pclose(pipe); }
};
using Pipe = std::unique_ptr<FILE, PipeClose>;

struct GFree {
  void operator()(void* memory) const { g_free(memory); }
};
template<typename T>
using GMemory = std::unique_ptr<T, GFree>;

// An open file of the system; negative if opening it failed.
class Descriptor
{
public:
  explicit Descriptor(int opened) : number(opened) {}
  ~Descriptor()
  {
    if (number >= 0)
      close(number);
  }
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;

  const int number;
};
