# vornadel-bomdiff on BOMs exported by the plug-in through the runner from generated moulds, read
# back with xlrd and Gnumeric (tests/bomdiff). The generator is not built for Windows: there the
# program compares the bundled requisition form (a BOM export without lines) with itself, named by
# its Chinese path on the wide command line, writes the change workbook from the template beside
# it, and refuses a missing file.
if(WIN32)
  set(BOMDIFF_FORM "${VORNADEL_ROOT}/samples/config/塑胶模/模具标准件申购表.xls")
  add_test(NAME bomdiff_win_no_changes COMMAND vornadel-bomdiff ${BOMDIFF_FORM} ${BOMDIFF_FORM})
  set_tests_properties(bomdiff_win_no_changes PROPERTIES
    PASS_REGULAR_EXPRESSION "模具标准件申购表\\.xls[^\n]*\n新: [^\n]*\n类别  名称[^\n]*\n-+\n\\(无变更\\)\n新增 0，数量变更 0，删除 0，变更 0，未变 0\n")
  # The change workbook is removed first (the program never overwrites one).
  set(BOMDIFF_CHANGES "${CMAKE_BINARY_DIR}/变更单.xls")
  add_test(NAME bomdiff_win_change_book_clean COMMAND ${CMAKE_COMMAND} -E rm -f ${BOMDIFF_CHANGES})
  add_test(NAME bomdiff_win_change_book COMMAND vornadel-bomdiff ${BOMDIFF_FORM} ${BOMDIFF_FORM} -o ${BOMDIFF_CHANGES})
  set_tests_properties(bomdiff_win_change_book PROPERTIES DEPENDS bomdiff_win_change_book_clean
    PASS_REGULAR_EXPRESSION "
变更单: [^
]*变更单\.xls
$")
  add_test(NAME bomdiff_win_missing_file COMMAND vornadel-bomdiff ${BOMDIFF_FORM} ${CMAKE_BINARY_DIR}/缺少.xls)
  set_tests_properties(bomdiff_win_missing_file PROPERTIES
    PASS_REGULAR_EXPRESSION "vornadel-bomdiff: cannot read [^\n]*缺少\\.xls: no such file or no permission")
else()
  vornadel_test(bomdiff_tests bomdiff bomdiff-core)
  target_sources(bomdiff_tests PRIVATE ${VORNADEL_ROOT}/tests/xls/XlsTestSupport.cpp)
  target_include_directories(bomdiff_tests PRIVATE ${NLOHMANN_JSON_INCLUDE} ${VORNADEL_ROOT}/tests/xls)
  target_link_libraries(bomdiff_tests PRIVATE vornadel_platform)
  add_dependencies(bomdiff_tests vornadel-bomdiff vornadel-host Vornadel moldgen xlsfill)
endif()
