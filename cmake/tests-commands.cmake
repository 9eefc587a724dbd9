# Saving, export and the dialog's commands, run inside the host. Exported workbooks are read back
# with python3-xlrd through the workbook tests' helpers.
vornadel_test(commands_tests commands Vornadel bodyinfo nxhost)
target_sources(commands_tests PRIVATE ${VORNADEL_ROOT}/tests/xls/XlsTestSupport.cpp)
target_include_directories(commands_tests PRIVATE ${NLOHMANN_JSON_INCLUDE} ${VORNADEL_ROOT}/libs/xls)
