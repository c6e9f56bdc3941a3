#pragma once

#include <array>
#include <cstddef>

#include "cli/exit-status.h"
#include "cli/finding.h"

class Output;

// Returns the finding in the format Format::PLAIN, with a line end.
std::string plain_line(const Finding& finding);

// Writes findings, one line each, and counts them.
class FindingWriter
{
public:
  enum class Format {
    PLAIN, // file:line: severity: consequence [rule]
    JSON,  // an object with the keys file, line, rule, severity and consequence
  };

  // If `strict`, warnings are faults, too. REQUIRES: `out` outlives this object.
  FindingWriter(Output& out, Format format, bool strict);

  // Writes a finding. Replaces invalid UTF-8 by U+FFFD, and in plain lines also control
  // characters. Throws CouldNotRun if the output fails.
  void write(const Finding& finding);

  // Returns the number of written findings of that severity.
  std::size_t count(Severity severity) const;
  // Returns whether a finding of that severity makes the status FAULTS.
  bool is_fault(Severity severity) const;
  // Returns whether the format is Format::JSON.
  bool is_json() const { return format == Format::JSON; }
  // Returns FAULTS if a written finding is a fault, else FINE.
  ExitStatus status() const;

private:
  Output& out;
  const Format format;
  const bool strict;
  std::array<std::size_t, 3> counts{}; // by severity
};
