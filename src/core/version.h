#pragma once

// Which release this is and when it was built; written at build.
namespace BuildInfo {
extern const int major;
extern const int minor;
extern const int buildnum;
extern const char* const version_str; // "major.minor.buildnum"
extern const char* const date_str;    // local build time, "YYYY-MM-DD hh:mm:ss"
} // namespace BuildInfo
