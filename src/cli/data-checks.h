#pragma once

#include <string>

struct CheckedDataSet;

// The checks of the data files. Each function reports the faults of its file to `set.faults`
// and records in `set` the facts that later checks need. REQUIRES: the caller calls them in
// this order, so that a file comes after the files that it refers to.

void check_metadata(CheckedDataSet& set);
void check_definitions(CheckedDataSet& set);
void check_limits(CheckedDataSet& set);
void check_regions(CheckedDataSet& set);
// The three files of a region. `region` is its code.
void check_families(CheckedDataSet& set, const std::string& region);
void check_species(CheckedDataSet& set, const std::string& region);
void check_zones(CheckedDataSet& set, const std::string& region);

void check_habitats(CheckedDataSet& set);
void check_region_habitats(CheckedDataSet& set);
void check_abundances(CheckedDataSet& set);
void check_view_definitions(CheckedDataSet& set);
void check_view_species(CheckedDataSet& set);
