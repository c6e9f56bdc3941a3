# random-use [--seed N] [--steps M] [--minutes K], in the build directory: uses the program
# at random for as long as wanted. See journeys/random_use.py.
file(GENERATE OUTPUT ${PROJECT_BINARY_DIR}/random-use
  CONTENT "#!/bin/sh
cd '${CMAKE_CURRENT_SOURCE_DIR}' || exit 1
export MAVO_SURVEY_SERVER='$<TARGET_FILE:survey-server>' MAVO_SERVER_PORT=${server_port}
export ASAN_OPTIONS=detect_leaks=0:strict_string_checks=1 UBSAN_OPTIONS=print_stacktrace=1
export NO_AT_BRIDGE=0 MAVO_TEST_TIMEOUT=86400
exec ./with-home ./with-display /usr/bin/python3 -B -m journeys.random_use \"$@\" \\
  '${server_application_dir}'
"
  FILE_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ WORLD_READ)
