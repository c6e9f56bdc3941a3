#pragma once

// The result of an operation that can fail. Compare it with RET_SUCCESS, never with zero.
enum RetCode {
  RET_SUCCESS = 2,
  RET_FAILURE = 3,
  RET_RESERVED_4 = 4,
  RET_RESERVED_5 = 5,
  RET_RESERVED_6 = 6,
  RET_MISSING_HEADING = 7, // a data file lacks a required heading
  RET_RESERVED_8 = 8,
  RET_RESERVED_9 = 9,
  RET_DECLINED = 10, // the user declined and nothing was done; never reported
  RET_INTERNAL_ERROR = 11,
  RET_ASSERTION = 12,
  RET_DATA_INSTALLED = 15, // new data files were installed and loaded; never reported
};

// Returns the exit status of the process for a fatal error with this code. Returns 1 for a
// code that has no specific status.
int translate_code(RetCode code);
