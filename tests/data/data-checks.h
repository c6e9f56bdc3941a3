#pragma once

#include <glibmm/ustring.h>
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

// What `action` writes to standard error, which is where error() leaves its text.
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
