#pragma once

#include "data/from-csv.h"
#include "data/species-view-definition.h"

// The species views that a subregion offers.
struct SubregionInfo {
  std::vector<SpeciesViewDefinition> views; // in file order
  FromCSV::Def view_choices;                // the same, for a drop-down box
  int default_view = -1;                    // id of the view to start with; -1: none
};
