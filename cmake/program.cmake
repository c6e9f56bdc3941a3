# The plain libraries (survey_core, survey_data, survey_store_plain) and survey_app link only
# lower libraries. The three upper libraries depend on each other, because each of the three
# folders implements the members of SurveyWindow of its subject, and these members call each
# other.
add_library(survey_program INTERFACE)
target_link_libraries(survey_program INTERFACE
  $<LINK_GROUP:RESCAN,survey_store,survey_ui,survey_server>)

add_executable(mavo-survey src/core/main.cc)
target_link_libraries(mavo-survey PRIVATE survey_flags survey_program)
set_target_properties(mavo-survey PROPERTIES
  RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/MAVO-Survey/MacOS)
