#pragma once

// The exit status of the command-line tools.
enum class ExitStatus {
  FINE = 0,          // the command found no faults
  FAULTS = 1,        // the command completed and found faults
  COULD_NOT_RUN = 2, // bad usage, an input that cannot be read, an output that cannot be written
};
