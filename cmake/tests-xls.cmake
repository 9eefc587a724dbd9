# Tests of the workbook engine (tests/xls): GoogleTest, with python3-xlrd as the independent
# reader; LibreOffice and Gnumeric checks run where those programs are installed.
vornadel_test(xls-tests xls xls)
target_include_directories(xls-tests PRIVATE ${NLOHMANN_JSON_INCLUDE})
# xlsfill is run by its tests.
add_dependencies(xls-tests xlsfill)
# The platform's Workbook adapter over the engine, with the path mapping it uses.
target_sources(xls-tests PRIVATE ${VORNADEL_ROOT}/src/platform/XlsWorkbook.cpp)
target_link_libraries(xls-tests PRIVATE vornadel_platform)
