# The folders call each other through the members of MyApp and SurveyWindow,
# each written in the folder of its subject. Headers only look downward; the
# linker has to look both ways.
add_library(survey_program INTERFACE)
target_link_libraries(survey_program INTERFACE
  $<LINK_GROUP:RESCAN,survey_core,survey_data,survey_store,survey_ui,survey_server,survey_build_info>)

add_executable(mavo-survey src/core/main.cc)
target_link_libraries(mavo-survey PRIVATE survey_flags survey_program)
set_target_properties(mavo-survey PROPERTIES
  RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/MAVO-Survey/MacOS)
