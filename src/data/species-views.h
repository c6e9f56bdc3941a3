#pragma once

#include "data/from-csv.h"
#include "data/id-set.h"

// The species of each view. A view is a selection of a subregion's species.
class SpeciesViews : public FromCSV
{
public:
  struct ViewSpecies {
    int speciesid;
    std::string familyid; // the family under which the view shows the species
  };

  // Reads species-views.csv in `dir`, which ends in a slash.
  explicit SpeciesViews(const std::string& dir);
  ~SpeciesViews() override;
  RetCode process_line(const std::vector<Glib::ustring>& fields) override;
  RetCode process_headings(const std::vector<Glib::ustring>& the_headings) override;

  // Returns the species of a view, for membership tests; empty if there is no such view.
  const IdSet& species_set(int view_id) const;
  // Returns the species of a view in display order; empty if there is no such view.
  const std::vector<ViewSpecies>& species_of(int view_id) const;

  std::vector<std::vector<ViewSpecies>> view_species; // by view id, in file order
  std::vector<std::string> view_subregions; // subregion code by view id; set by read_data_set()
  std::vector<IdSet> view_species_sets;     // by view id
};
