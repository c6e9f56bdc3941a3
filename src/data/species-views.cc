#include "data/species-views.h"

#include "core/number.h"

namespace {

const char* const expected_headings[] = {"viewid", "speciesid", "familyid", nullptr};
enum Heading { VIEWID, SPECIESID, FAMILYID };

// Returns the entry of a table for a view id, or an empty entry if there is none.
template<typename Table>
const typename Table::value_type& entry_or_empty(const Table& table, int view_id)
{
  static const typename Table::value_type empty;
  if (view_id < 0 || static_cast<std::size_t>(view_id) >= table.size())
    return empty;
  return table[static_cast<std::size_t>(view_id)];
}

} // namespace

SpeciesViews::SpeciesViews(const std::string& dir)
{
  valid = SpeciesViews::read_file(dir + "species-views.csv") == RET_SUCCESS;
}

SpeciesViews::~SpeciesViews() = default;

RetCode SpeciesViews::process_headings(const std::vector<Glib::ustring>& the_headings)
{
  return verify_headings(the_headings, expected_headings);
}

RetCode SpeciesViews::process_line(const std::vector<Glib::ustring>& fields)
{
  if (fields.empty())
    return RET_SUCCESS;
  const int view_id = to_int(field(fields, VIEWID));
  const int species_id = to_int(field(fields, SPECIESID));
  if (!usable_id(view_id, "viewid") || !usable_id(species_id, "speciesid"))
    return RET_SUCCESS;
  const auto index = static_cast<std::size_t>(view_id);
  if (index >= view_species.size()) {
    view_species.resize(index + 1);
    view_species_sets.resize(index + 1);
  }
  view_species[index].push_back({species_id, field(fields, FAMILYID).raw()});
  view_species_sets[index].insert(species_id);
  return RET_SUCCESS;
}

const IdSet& SpeciesViews::species_set(int view_id) const
{
  return entry_or_empty(view_species_sets, view_id);
}

const std::vector<SpeciesViews::ViewSpecies>& SpeciesViews::species_of(int view_id) const
{
  return entry_or_empty(view_species, view_id);
}
