#include "core/launch.h"

#include <cstdio>

int main(int argc, char** argv)
{
  setlinebuf(stdout);
  init_gtk_stuff(argc, argv);
  take_debug_argument(argc, argv);
  return 0;
}
