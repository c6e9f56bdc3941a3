#pragma once

#include "core/report.h"

#include <glibmm/ustring.h>
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

// What `action` writes to standard output.
inline std::string printed_by(const std::function<void()>& action)
{
  testing::internal::CaptureStdout();
  action();
  return testing::internal::GetCapturedStdout();
}

// What `action` writes to standard error, which is what error() leaves there.
inline std::string reported_by(const std::function<void()>& action)
{
  testing::internal::CaptureStderr();
  action();
  return testing::internal::GetCapturedStderr();
}

// The bytes of the texts; Glib::ustring itself compares by collation.
inline std::vector<std::string> bytes(const std::vector<Glib::ustring>& texts)
{
  return {texts.begin(), texts.end()};
}

// Sets the trace level for a while.
class DebugLevel
{
public:
  explicit DebugLevel(int level) : before(debug_level) { debug_level = level; }
  ~DebugLevel() { debug_level = before; }
  DebugLevel(const DebugLevel&) = delete;
  DebugLevel& operator=(const DebugLevel&) = delete;

private:
  int before;
};
