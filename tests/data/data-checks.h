#pragma once

#include <glibmm/ustring.h>
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

// Returns what `action` writes to standard error, such as the text of error().
inline std::string reported_by(const std::function<void()>& action)
{
  testing::internal::CaptureStderr();
  action();
  return testing::internal::GetCapturedStderr();
}

// Returns the bytes of the texts, because Glib::ustring compares by collation.
inline std::vector<std::string> bytes(const std::vector<Glib::ustring>& texts)
{
  return {texts.begin(), texts.end()};
}
