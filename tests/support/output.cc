#include "support/output.h"

#include <gtest/gtest.h>

std::string output_of(const std::function<void()>& action)
{
  testing::internal::CaptureStdout();
  action();
  return testing::internal::GetCapturedStdout();
}

std::string output_of(int level, const std::function<void()>& action)
{
  const TraceLevel trace(level);
  return output_of(action);
}
