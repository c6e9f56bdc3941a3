#include "cli/progress.h"

#include <unistd.h>

#include <cstdio>

Progress::Progress() : is_terminal(isatty(STDERR_FILENO) != 0) {}

void Progress::show(std::size_t done, std::size_t all)
{
  constexpr std::size_t every = 50;
  if (!is_terminal || done % every != 0)
    return;
  std::fprintf(stderr, "\r%zu of %zu", done, all);
  is_shown = true;
}

void Progress::clear()
{
  if (is_shown)
    std::fputs("\r\033[K", stderr);
  is_shown = false;
}
