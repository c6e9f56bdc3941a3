#pragma once

#include <optional>
#include <string>

// The severity of a fault. The names appear in the output.
enum class Severity {
  error,   // the program or the server refuses the input
  warning, // the program displays something incorrectly or omits it
  hint,    // harmless; never makes a command fail
};

// One fault that a command reports.
struct Finding {
  std::string file;         // the path as the user would write it; can be invalid UTF-8
  std::optional<long> line; // from 1; empty if the fault has no line
  std::string rule;         // the id of the rule, in lower case with hyphens
  Severity severity = Severity::error;
  std::string consequence; // what a user notices, as a sentence without a full stop
};
