# Language level, warnings and instrumentation of our own code. Headers of the toolkit come from
# imported targets, so they are system headers.
add_library(survey_flags INTERFACE)
target_compile_features(survey_flags INTERFACE cxx_std_17)
target_compile_options(survey_flags INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion)
target_include_directories(survey_flags INTERFACE ${PROJECT_SOURCE_DIR}/src)

# The release build is hardened like Debian's programs and does not depend on the directory of
# the build.
set(release_only "$<$<CONFIG:Release>:")
target_compile_options(survey_flags INTERFACE
  "${release_only}-ffile-prefix-map=${PROJECT_BINARY_DIR}=build>"
  "${release_only}-ffile-prefix-map=${PROJECT_SOURCE_DIR}=.>"
  "${release_only}-fstack-protector-strong>" "${release_only}-fPIE>")
target_compile_definitions(survey_flags INTERFACE "${release_only}_FORTIFY_SOURCE=2>")
target_link_options(survey_flags INTERFACE "${release_only}LINKER:-z,relro,-z,now>"
  "${release_only}-pie>")

if(MAVO_SANITIZE)
  target_compile_options(survey_flags INTERFACE
    -fsanitize=${MAVO_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(survey_flags INTERFACE -fsanitize=${MAVO_SANITIZE})
endif()
if(MAVO_COVERAGE)
  target_compile_options(survey_flags INTERFACE --coverage)
  target_link_options(survey_flags INTERFACE --coverage)
endif()
set(CMAKE_CXX_EXTENSIONS OFF)
