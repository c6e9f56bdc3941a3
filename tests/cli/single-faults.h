#pragma once

#include "support/data-set.h"

#include <iosfwd>
#include <vector>

#include "cli/finding.h"

// A change of a file of the good set. If the text is null, the change appends to the file. If the
// replacement is null, the change removes the file.
struct Edit {
  const char* file;
  const char* text;
  const char* replacement;

  // Makes the change in the files of `set`. The test fails if the file does not contain the text.
  void apply_to(const DataSet& set) const;
};

// One fault and its expected finding. `line` is 0 if the finding has no line.
struct SingleFault {
  const char* rule;
  Severity severity;
  const char* file;
  long line;
  std::vector<Edit> edits;
};

// Prints the name of the fault in messages of a test.
std::ostream& operator<<(std::ostream& out, const SingleFault& fault);

// Returns at least one fault for each rule, except for rules that need a large file.
const std::vector<SingleFault>& single_faults();
