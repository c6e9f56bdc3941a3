#pragma once

#include <string>

struct CheckedDataSet;

// The checks of the single files. Each reports the faults of its file, and notes in the set
// what others need. They are called in this order: a file comes after those that it refers to.

void check_metadata(CheckedDataSet& set);
void check_definitions(CheckedDataSet& set);
void check_limits(CheckedDataSet& set);
void check_regions(CheckedDataSet& set);
// The three files of a region.
void check_families(CheckedDataSet& set, const std::string& region);
void check_species(CheckedDataSet& set, const std::string& region);
void check_zones(CheckedDataSet& set, const std::string& region);
void check_habitats(CheckedDataSet& set);
void check_region_habitats(CheckedDataSet& set);
void check_abundances(CheckedDataSet& set);
void check_view_definitions(CheckedDataSet& set);
void check_view_species(CheckedDataSet& set);
