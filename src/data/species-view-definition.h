#pragma once

#include <glibmm/ustring.h>

// The id and the name of a species view. SpeciesViews has its species.
struct SpeciesViewDefinition {
  int viewid = -1;
  Glib::ustring viewname;
};
