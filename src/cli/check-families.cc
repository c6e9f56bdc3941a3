#include "cli/alike-names.h"
#include "cli/data-checks.h"
#include "cli/name-markup.h"
#include "cli/table-check.h"

namespace {

const char* const expected_headings[] = {"familyid", "scientificname", "commonname", nullptr};
enum Heading { FAMILYID, SCIENTIFICNAME, COMMONNAME };

// Checks the families of a region.
class FamilyCheck : public TableCheck
{
public:
  FamilyCheck(CheckedDataSet& the_set, const std::string& region)
      : TableCheck(the_set, region + "-family-info.csv", expected_headings),
        families(the_set.regions[region].families)
  {
  }

private:
  void check_row() override;
  void check_end() override { families.is_complete = is_complete(); }

  KnownIds<std::string>& families;
  AlikeNames common_names{"family", AlikeNames::Equal::FINE};
};

void FamilyCheck::check_row()
{
  const std::string id_text = quoted(text(FAMILYID));
  require_name(text(COMMONNAME), "The family", id_text);
  common_names.add(*this, text(COMMONNAME));
  for (const Heading heading : {SCIENTIFICNAME, COMMONNAME})
    check_name_markup(*this, text(heading));
  check_duplicate(families.add(text(FAMILYID), line()), "The family", id_text,
                  "users see it twice, with the names of this row");
}

} // namespace

void check_families(CheckedDataSet& set, const std::string& region)
{
  FamilyCheck(set, region).run();
}
