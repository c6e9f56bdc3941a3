# Writes the source file of namespace BuildInfo. The date is the local time, or
# SOURCE_DATE_EPOCH in UTC (reproducible builds must not depend on the zone).
string(REPLACE "." ";" numbers ${VERSION})
list(GET numbers 0 major)
list(GET numbers 1 minor)
list(GET numbers 2 buildnum)
if(DEFINED ENV{SOURCE_DATE_EPOCH})
  string(TIMESTAMP date "%Y-%m-%d %H:%M:%S" UTC)
else()
  string(TIMESTAMP date "%Y-%m-%d %H:%M:%S")
endif()
file(WRITE ${OUT} "#include \"core/version.h\"

namespace BuildInfo {
const int major = ${major};
const int minor = ${minor};
const int buildnum = ${buildnum};
const char* const version_str = \"${VERSION}\";
const char* const date_str = \"${date}\";
} // namespace BuildInfo
")
