# The address of the server is fixed when the program is built. This function adds a second
# program that uses another port of this machine. It shares all libraries with the first
# program; only two sources are compiled again.
#
# survey_server_program(DIRECTORY PORT): adds the target mavo-survey-test-server,
# which makes DIRECTORY the application directory of a program for 127.0.0.1:PORT.
function(survey_server_program directory port)
  set(MAVO_WEB_HOST 127.0.0.1:${port})
  # The linker uses this my-app.cc instead of the one in the library.
  add_executable(mavo-survey-test-server ${PROJECT_SOURCE_DIR}/src/core/main.cc
    ${PROJECT_SOURCE_DIR}/src/core/my-app.cc)
  target_link_libraries(mavo-survey-test-server PRIVATE survey_flags survey_program)
  target_compile_definitions(mavo-survey-test-server PRIVATE MAVO_WEB_HOST="${MAVO_WEB_HOST}")
  set_target_properties(mavo-survey-test-server PROPERTIES OUTPUT_NAME mavo-survey
    RUNTIME_OUTPUT_DIRECTORY ${directory}/MacOS)

  # Links to the files of the other program. Only the executable and the definition of the window
  # differ.
  add_dependencies(mavo-survey-test-server application_directory)
  file(MAKE_DIRECTORY ${directory}/MacOS)
  foreach(part data-files Info.plist MacOS/mavo-survey-env-setup.sh)
    file(CREATE_LINK ${application_dir}/${part} ${directory}/${part} SYMBOLIC)
  endforeach()
  file(REMOVE_RECURSE ${directory}/resources)
  file(MAKE_DIRECTORY ${directory}/resources)
  file(GLOB resources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/resources/*)
  foreach(resource ${resources})
    cmake_path(GET resource FILENAME name)
    file(CREATE_LINK ${resource} ${directory}/resources/${name} SYMBOLIC)
  endforeach()
  file(REMOVE ${directory}/resources/survey-ui.glade)
  configure_file(${PROJECT_SOURCE_DIR}/resources/survey-ui.glade
    ${directory}/resources/survey-ui.glade @ONLY)
endfunction()
