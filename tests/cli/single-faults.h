#pragma once

#include "support/data-set.h"

#include <iosfwd>
#include <vector>

#include "cli/finding.h"

// How a file of the good set is changed. A text that is null is the end of the file; without
// a replacement the whole file goes.
struct Edit {
  const char* file;
  const char* text;
  const char* replacement;

  void apply_to(const DataSet& set) const;
};

// One fault, and the finding that is expected: `line` is 0 if it has none.
struct SingleFault {
  const char* rule;
  Severity severity;
  const char* file;
  long line;
  std::vector<Edit> edits;
};

// Names the fault in messages of a test.
std::ostream& operator<<(std::ostream& out, const SingleFault& fault);

// At least one for each rule, but for those that need a large file.
const std::vector<SingleFault>& single_faults();
