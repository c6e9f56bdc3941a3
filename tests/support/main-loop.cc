#include "support/main-loop.h"

#include <glibmm/main.h>

void settle()
{
  while (Glib::MainContext::get_default()->iteration(false)) {
  }
}
