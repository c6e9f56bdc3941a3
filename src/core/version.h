#pragma once

// The release and its build time. The build generates the values.
namespace BuildInfo {
extern const int major;
extern const int minor;
extern const int buildnum;
extern const char* const version_str; // "major.minor.buildnum"
extern const char* const date_str;    // local build time, "YYYY-MM-DD hh:mm:ss"
} // namespace BuildInfo
