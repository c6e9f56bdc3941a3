#include "ui/printed.h"

#include "core/report.h"

#include <gtest/gtest.h>

std::string printed(int level, const std::function<void()>& action)
{
  const int level_before = debug_level;
  debug_level = level;
  testing::internal::CaptureStdout();
  action();
  debug_level = level_before;
  return testing::internal::GetCapturedStdout();
}
