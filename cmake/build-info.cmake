# Generates BuildInfo again whenever a source of the program changes, so that its date is that
# of the build.
file(GLOB_RECURSE survey_sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/src/*.cc
  ${PROJECT_SOURCE_DIR}/src/*.h)
set(build_info_cc ${PROJECT_BINARY_DIR}/generated/build-info.cc)
add_custom_command(OUTPUT ${build_info_cc}
  COMMAND ${CMAKE_COMMAND} -DOUT=${build_info_cc} -DVERSION=${PROJECT_VERSION}
    -P ${PROJECT_SOURCE_DIR}/cmake/write-build-info.cmake
  DEPENDS ${survey_sources} ${PROJECT_SOURCE_DIR}/cmake/write-build-info.cmake
  COMMENT "Writing the version and the build date" VERBATIM)
add_library(survey_build_info STATIC ${build_info_cc})
target_link_libraries(survey_build_info PRIVATE survey_flags)
