# Precompiled headers of the libraries. A source file still includes what it uses, because
# tools/lint builds without them. The plain libraries get no GTK header.
if(NOT MAVO_PCH)
  return()
endif()

set(survey_empty_cc ${PROJECT_BINARY_DIR}/generated/empty.cc)
file(CONFIGURE OUTPUT ${survey_empty_cc} CONTENT "")

# survey_precompile(NAME HEADERS header... LIBRARIES library... TARGETS target...)
function(survey_precompile name)
  cmake_parse_arguments(arg "" "" "HEADERS;LIBRARIES;TARGETS" ${ARGN})
  add_library(${name} OBJECT ${survey_empty_cc})
  target_link_libraries(${name} PRIVATE survey_flags ${arg_LIBRARIES})
  target_precompile_headers(${name} PRIVATE ${arg_HEADERS})
  foreach(target ${arg_TARGETS})
    target_precompile_headers(${target} REUSE_FROM ${name})
  endforeach()
endfunction()

survey_precompile(plain_headers
  HEADERS <giomm.h> <glibmm.h> <functional> <map> <string> <vector>
  LIBRARIES PkgConfig::GIOMM
  TARGETS survey_core survey_data survey_store_plain survey_cli)
survey_precompile(toolkit_headers
  HEADERS <gtkmm.h> <libxml++/libxml++.h> <functional> <map> <string> <vector>
  LIBRARIES PkgConfig::GTKMM PkgConfig::LIBXMLPP
  TARGETS survey_app survey_store survey_server survey_ui)
