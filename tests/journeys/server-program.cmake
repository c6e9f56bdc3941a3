# The address of the server is set when the program is built. The journeys that
# have a server use a second program, which asks this machine instead, at a port
# that each build directory has for itself.
string(MD5 hash ${PROJECT_BINARY_DIR})
string(SUBSTRING ${hash} 0 6 digits)
math(EXPR server_port "20000 + 0x${digits} % 12000") # below those that connections get
set(server_application_dir ${PROJECT_BINARY_DIR}/test-server/MAVO-Survey)

# The linker takes what my-app.cc defines from here and not from the library.
add_executable(mavo-survey-test-server ${PROJECT_SOURCE_DIR}/src/core/main.cc
  ${PROJECT_SOURCE_DIR}/src/core/my-app.cc)
target_link_libraries(mavo-survey-test-server PRIVATE survey_flags survey_program)
target_compile_definitions(mavo-survey-test-server PRIVATE
  MAVO_WEB_HOST="127.0.0.1:${server_port}")
set_target_properties(mavo-survey-test-server PROPERTIES OUTPUT_NAME mavo-survey
  RUNTIME_OUTPUT_DIRECTORY ${server_application_dir}/MacOS)

# The rest of its application directory is that of the real one.
add_dependencies(mavo-survey-test-server application_directory)
file(MAKE_DIRECTORY ${server_application_dir}/MacOS)
foreach(part resources data-files MacOS/mavo-survey-env-setup.sh)
  file(CREATE_LINK ${application_dir}/${part} ${server_application_dir}/${part} SYMBOLIC)
endforeach()
