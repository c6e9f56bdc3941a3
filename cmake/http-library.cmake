# MAVO_SOUP selects the libsoup of the program and the test server. A process must not load both
# versions, so all targets use PkgConfig::LIBSOUP.
set(MAVO_SOUP auto CACHE STRING "Version of libsoup: 2.4, 3, or auto for 2.4 where it exists")
set_property(CACHE MAVO_SOUP PROPERTY STRINGS auto 2.4 3)

# A change of the option discards what was found for the other version.
if(NOT "${MAVO_SOUP}" STREQUAL "${MAVO_SOUP_SOUGHT}")
  unset(__pkg_config_checked_LIBSOUP CACHE)
  set(MAVO_SOUP_SOUGHT ${MAVO_SOUP} CACHE INTERNAL "Value of MAVO_SOUP at the last search")
endif()

if(MAVO_SOUP STREQUAL auto)
  pkg_search_module(LIBSOUP REQUIRED IMPORTED_TARGET libsoup-2.4>=2.72 libsoup-3.0>=3.2)
elseif(MAVO_SOUP STREQUAL 2.4)
  pkg_check_modules(LIBSOUP REQUIRED IMPORTED_TARGET libsoup-2.4>=2.72)
elseif(MAVO_SOUP STREQUAL 3)
  pkg_check_modules(LIBSOUP REQUIRED IMPORTED_TARGET libsoup-3.0>=3.2)
else()
  message(FATAL_ERROR "MAVO_SOUP is ${MAVO_SOUP}, but must be auto, 2.4 or 3")
endif()

# The number in the names of the sources for this version: 2 or 3.
string(REGEX MATCH "^[23]" soup_major ${LIBSOUP_VERSION})
message(STATUS "HTTP library: libsoup ${LIBSOUP_VERSION}")
