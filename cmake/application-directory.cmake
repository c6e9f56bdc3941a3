# <build>/MAVO-Survey is a complete application directory with the files that `cmake
# --install` installs under share/mavo-survey. The program can run from the build directory.
set(application_dir ${PROJECT_BINARY_DIR}/MAVO-Survey)
set(launch_script ${PROJECT_SOURCE_DIR}/packaging/mavo-survey-env-setup.sh)

# The definition of the window contains the addresses of the build, and the licence. The About
# dialog wraps lines itself, so this removes line breaks within paragraphs.
file(READ LICENSE licence)
string(REGEX REPLACE "([^\n])\n([^\n])" "\\1 \\2" licence "${licence}")
string(REPLACE "&" "&amp;" licence "${licence}")
string(REPLACE "<" "&lt;" MAVO_LICENSE "${licence}")
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS LICENSE)
set(definition_file ${PROJECT_BINARY_DIR}/generated/survey-ui.glade)
configure_file(resources/survey-ui.glade ${definition_file} @ONLY)
set(generated_resources ${definition_file})

foreach(folder resources data-files)
  file(GLOB files CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/${folder}/*)
  # This file makes the build copy the directory again after a file is removed.
  set(names ${PROJECT_BINARY_DIR}/generated/${folder}.txt)
  file(CONFIGURE OUTPUT ${names} CONTENT "${files}\n" @ONLY)
  set(stamp ${PROJECT_BINARY_DIR}/${folder}.stamp)
  add_custom_command(OUTPUT ${stamp}
    COMMAND ${CMAKE_COMMAND} -E rm -rf ${application_dir}/${folder}
    COMMAND ${CMAKE_COMMAND} -E make_directory ${application_dir}/${folder}
    COMMAND ${CMAKE_COMMAND} -E copy ${files} ${generated_${folder}} ${application_dir}/${folder}
    COMMAND ${CMAKE_COMMAND} -E touch ${stamp}
    DEPENDS ${files} ${generated_${folder}} ${names}
    COMMENT "Copying ${folder} into the application directory" VERBATIM)
  list(APPEND stamps ${stamp})
endforeach()

# macOS starts a directory NAME.app as a program if its directory Contents has this form:
# Info.plist describes the program, and MacOS contains the executable.
configure_file(packaging/Info.plist.in ${application_dir}/Info.plist @ONLY)

set(script_copy ${application_dir}/MacOS/mavo-survey-env-setup.sh)
add_custom_command(OUTPUT ${script_copy}
  COMMAND ${CMAKE_COMMAND} -E copy ${launch_script} ${script_copy}
  DEPENDS ${launch_script} VERBATIM)
add_custom_target(application_files DEPENDS ${stamps} ${script_copy})
add_custom_target(application_directory ALL)
add_dependencies(application_directory application_files mavo-survey)

# Only the program depends on the processor. All other files are installed as the
# application directory share/mavo-survey. Its relative link to the program is valid for any prefix.
set(program_link ${PROJECT_BINARY_DIR}/generated/mavo-survey)
file(CREATE_LINK ../../../lib/mavo-survey/mavo-survey ${program_link} SYMBOLIC)
install(TARGETS mavo-survey DESTINATION lib/mavo-survey)
install(FILES ${program_link} DESTINATION share/mavo-survey/MacOS)
install(PROGRAMS ${launch_script} DESTINATION share/mavo-survey/MacOS)
install(FILES ${application_dir}/Info.plist DESTINATION share/mavo-survey COMPONENT resources)
install(DIRECTORY resources data-files DESTINATION share/mavo-survey COMPONENT resources
  PATTERN survey-ui.glade EXCLUDE)
install(FILES ${definition_file} DESTINATION share/mavo-survey/resources COMPONENT resources)
