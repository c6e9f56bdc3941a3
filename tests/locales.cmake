# What needs no window, and one journey, once more in other languages, with other
# sort orders, letters of other cases and another encoding of text. The tests
# compare with the same documents and file names in all of them. C.UTF-8 is the
# locale of all other runs.
if(MAVO_SANITIZE OR MAVO_COVERAGE OR MAVO_FUZZ)
  return()
endif()

set(locale_directory ${PROJECT_BINARY_DIR}/locales)
set(made_locales en_US.UTF-8 tr_TR.UTF-8 ja_JP.UTF-8 zh_CN.GB18030)
survey_test(locales ${CMAKE_CURRENT_SOURCE_DIR}/make-locales ${locale_directory} ${made_locales})
set_tests_properties(locales PROPERTIES FIXTURES_SETUP locales)

# The comparison of a million lines and the damaged data know no locale.
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
  # The random surveys that the store's tests leave are not written anew while they are read.
  set_tests_properties(store_tests-${locale} PROPERTIES DEPENDS documents)
  survey_journey(journey-${locale} test_leaves_one_file_that_holds_all_of_it ${application_dir})
  in_locale(${locale} journey-${locale})
endforeach()
