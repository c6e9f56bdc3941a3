# Runs the tests without a window, and one journey, in other locales with other sort orders,
# other upper and lower case letters and another text encoding. The expected documents and file
# names are the same in all locales. All other runs use C.UTF-8.
if(MAVO_SANITIZE OR MAVO_COVERAGE OR MAVO_FUZZ)
  return()
endif()

set(locale_directory ${PROJECT_BINARY_DIR}/locales)
set(made_locales en_US.UTF-8 tr_TR.UTF-8 ja_JP.UTF-8 zh_CN.GB18030)
survey_test(locales ${CMAKE_CURRENT_SOURCE_DIR}/make-locales ${locale_directory} ${made_locales})
set_tests_properties(locales PROPERTIES FIXTURES_SETUP locales)

# The comparison of a million lines and the damaged data do not depend on the locale.
set(without_locale --gtest_filter=-CsvLine.IsReadLike*:DamagedData.*)

function(in_locale locale test)
  set_property(TEST ${test} APPEND PROPERTY ENVIRONMENT MAVO_TEST_LOCALE=${locale}
    LOCPATH=${locale_directory})
  set_tests_properties(${test} PROPERTIES FIXTURES_REQUIRED locales)
endfunction()

foreach(locale C ${made_locales})
  foreach(program core_tests data_tests store_tests ui_tests)
    set(name ${program}-${locale})
    survey_test(${name} ${with_home} $<TARGET_FILE:${program}> ${without_locale}
      --gtest_output=xml:${test_results}/${name}.xml)
    in_locale(${locale} ${name})
  endforeach()
  # The store's tests must not write their random surveys while another test reads them.
  set_tests_properties(store_tests-${locale} PROPERTIES DEPENDS documents)
  survey_journey(journey-${locale} test_saves_one_file_with_all_entries ${application_dir})
  set_tests_properties(journey-${locale} PROPERTIES LABELS "")
  in_locale(${locale} journey-${locale})
endforeach()
