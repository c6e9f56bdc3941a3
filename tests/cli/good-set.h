#pragma once

#include "support/data-set.h"

// Writes the files of DataSet::minimal() to `set`, but with every species in a view. Then
// mavo-data check finds nothing in it.
inline void write_good_set(const DataSet& set)
{
  set.minimal();
  set.file("species-views.csv", "viewid,speciesid,familyid\n"
                                "1,10,F1\n1,11,F2\n"
                                "2,10,F1\n2,11,F2\n2,12,F2\n2,20,F3\n2,21,F3\n"
                                "3,10,F1\n4,1,F1\n4,2,F2\n4,3,F2\n");
}
