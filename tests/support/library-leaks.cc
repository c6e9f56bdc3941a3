// Tells the leak detector to overlook what the libraries allocate while they are
// loaded. GLib replaces the first table of its quarks later without freeing it,
// and by its call stack that table looks like anything that GLib allocates.
#include <sanitizer/lsan_interface.h>

namespace {

void before_the_libraries(int, char**, char**)
{
  __lsan_disable();
}

__attribute__((section(".preinit_array"), used)) void (*const first)(int, char**,
                                                                     char**) = before_the_libraries;

__attribute__((constructor)) void after_the_libraries()
{
  __lsan_enable();
}

} // namespace
