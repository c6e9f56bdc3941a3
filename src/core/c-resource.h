#pragma once

#include <glib.h>

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
