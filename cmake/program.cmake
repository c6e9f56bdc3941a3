# The plain libraries (survey_core, survey_data, survey_store_plain) and survey_app each link
# only what is below them. The three above depend on each other: the members of SurveyWindow
# are written in all three folders, each in the folder of its subject, and call each other.
add_library(survey_program INTERFACE)
target_link_libraries(survey_program INTERFACE
  $<LINK_GROUP:RESCAN,survey_store,survey_ui,survey_server>)

add_executable(mavo-survey src/core/main.cc)
target_link_libraries(mavo-survey PRIVATE survey_flags survey_program)
set_target_properties(mavo-survey PROPERTIES
  RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/MAVO-Survey/MacOS)
