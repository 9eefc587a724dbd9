# libs/xls: the template workbook engine (C++98), linked into the plug-in.
file(GLOB XLS_SOURCES CONFIGURE_DEPENDS ${VORNADEL_ROOT}/libs/xls/*.cpp)
add_library(xls STATIC ${XLS_SOURCES})
vornadel_cxx98(xls)
target_include_directories(xls PUBLIC ${VORNADEL_ROOT}/libs/xls)

if(VORNADEL_NX_SDK)
  return()  # the NX SDK build makes the plug-in only
endif()

# xlsfill IN.xls OUT.xls: writes cells given on standard input into a workbook (tools/xlsfill).
add_executable(xlsfill ${VORNADEL_ROOT}/tools/xlsfill/main.cpp)
vornadel_cxx17(xlsfill)
target_link_libraries(xlsfill PRIVATE xls)

# Fuzzing (clang only): cmake -DVORNADEL_FUZZ=ON -DCMAKE_CXX_COMPILER=clang++ -DCMAKE_C_COMPILER=clang
# builds xls-load-fuzz, a libFuzzer target for Book::loadBuffer.
if(VORNADEL_FUZZ)
  vornadel_fuzz_target(xls-load-fuzz SOURCE ${VORNADEL_ROOT}/tests/xls/fuzz/LoadFuzz.cpp
    LIBRARY ${XLS_SOURCES} INCLUDE ${VORNADEL_ROOT}/libs/xls)
endif()

# bench_xls_export: the workbook side of the BOM export timed for 100 to 60,000 part rows; run on
# demand (bench/README.md).
add_executable(bench_xls_export ${VORNADEL_ROOT}/bench/xls/ExportBench.cpp)
vornadel_cxx17(bench_xls_export)
target_compile_definitions(bench_xls_export PRIVATE VORNADEL_SOURCE_DIR="${VORNADEL_ROOT}")
target_link_libraries(bench_xls_export PRIVATE xls)
