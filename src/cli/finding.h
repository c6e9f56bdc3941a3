#pragma once

#include <optional>
#include <string>

enum class Severity {
  error,   // the program or the server refuses the input
  warning, // users see something wrong or miss something
  hint,    // nobody is harmed; never makes a command fail
};

// One fault that a command reports.
struct Finding {
  std::string file;         // the path as the user would write it; any bytes
  std::optional<long> line; // from 1; none if the fault has no line
  std::string rule;         // the id of the rule, in lower case with hyphens
  Severity severity = Severity::error;
  std::string consequence; // a sentence without a full stop: what a user will notice
};
