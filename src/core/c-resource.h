#pragma once

#include <glib.h>
#include <unistd.h>

#include <cstdio>
#include <memory>

// RAII owners of resources that C libraries return.

// Closes a pipe of popen() and waits for its command.
struct PipeClose {
  void operator()(FILE* pipe) const { pclose(pipe); }
};
using Pipe = std::unique_ptr<FILE, PipeClose>;

// Frees memory from GLib.
struct GFree {
  void operator()(void* memory) const { g_free(memory); }
};
template<typename T>
using GMemory = std::unique_ptr<T, GFree>;

// Owns a file descriptor and closes it. `number` is negative if opening the file failed.
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
