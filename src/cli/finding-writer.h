#pragma once

#include <array>
#include <cstddef>

#include "cli/exit-status.h"
#include "cli/finding.h"

class Output;

// file:line: severity: consequence [rule], with a line end.
std::string plain_line(const Finding& finding);

// Writes findings as they come, one line each, and counts them.
class FindingWriter
{
public:
  enum class Format {
    PLAIN, // file:line: severity: consequence [rule]
    JSON,  // an object with the keys file, line, rule, severity and consequence
  };

  // `out` must live as long. With `strict` warnings are faults, too.
  FindingWriter(Output& out, Format format, bool strict);

  // Bytes that are not UTF-8 become U+FFFD; in plain lines control characters do, too.
  // Throws CouldNotRun if the output fails.
  void write(const Finding& finding);

  std::size_t count(Severity severity) const;
  // Whether a finding of that severity makes the status FAULTS.
  bool is_fault(Severity severity) const;
  bool is_json() const { return format == Format::JSON; }
  // FINE or FAULTS, as far as findings have been written.
  ExitStatus status() const;

private:
  Output& out;
  const Format format;
  const bool strict;
  std::array<std::size_t, 3> counts{}; // by severity
};
