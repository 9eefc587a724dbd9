# vornadel-bomdiff on BOMs exported by the plug-in through the runner from generated moulds, read
# back with xlrd and Gnumeric (tests/bomdiff).
vornadel_test(bomdiff_tests bomdiff xls)
target_sources(bomdiff_tests PRIVATE ${VORNADEL_ROOT}/tests/xls/XlsTestSupport.cpp)
target_include_directories(bomdiff_tests PRIVATE ${NLOHMANN_JSON_INCLUDE} ${VORNADEL_ROOT}/tests/xls)
target_link_libraries(bomdiff_tests PRIVATE vornadel_platform)
add_dependencies(bomdiff_tests vornadel-bomdiff vornadel-host Vornadel moldgen xlsfill)
