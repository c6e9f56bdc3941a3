#pragma once

#include <glibmm/ustring.h>

// A named list of species.
struct SpeciesViewDefinition {
  int viewid = -1;
  Glib::ustring viewname;
};
