#pragma once

#include "data/from-csv.h"
#include "data/species-view-definition.h"

// The species views that a subregion offers.
struct SubregionInfo {
  std::vector<SpeciesViewDefinition> views; // in file order
  FromCSV::Def view_choices;                // the same views, for a drop-down box
  int default_view = -1;                    // the id of the initial view; -1: none
};
