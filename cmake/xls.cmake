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
# builds xls-load-fuzz, a libFuzzer target for Book::loadBuffer over an instrumented copy of the
# engine (AddressSanitizer and UndefinedBehaviorSanitizer included).
if(VORNADEL_FUZZ)
  set(XLS_FUZZ_FLAGS -fsanitize=address,undefined -fno-sanitize-recover=undefined -fno-omit-frame-pointer)
  add_library(xls_fuzzed STATIC ${XLS_SOURCES})
  vornadel_cxx98(xls_fuzzed)
  target_compile_options(xls_fuzzed PRIVATE ${XLS_FUZZ_FLAGS} -fsanitize=fuzzer-no-link)
  target_include_directories(xls_fuzzed PUBLIC ${VORNADEL_ROOT}/libs/xls)
  add_executable(xls-load-fuzz ${VORNADEL_ROOT}/tests/xls/fuzz/LoadFuzz.cpp)
  vornadel_cxx17(xls-load-fuzz)
  target_compile_options(xls-load-fuzz PRIVATE ${XLS_FUZZ_FLAGS} -fsanitize=fuzzer)
  target_link_options(xls-load-fuzz PRIVATE ${XLS_FUZZ_FLAGS} -fsanitize=fuzzer)
  target_link_libraries(xls-load-fuzz PRIVATE xls_fuzzed)
  # clang has no GBK execution character set; neither target has narrow non-ASCII literals.
  foreach(target xls_fuzzed xls-load-fuzz)
    get_target_property(options ${target} COMPILE_OPTIONS)
    list(REMOVE_ITEM options -fexec-charset=GBK)
    set_target_properties(${target} PROPERTIES COMPILE_OPTIONS "${options}")
  endforeach()
endif()

# bench_xls_export: the workbook side of the BOM export timed for 100 to 60,000 part rows; run on
# demand (bench/README.md).
add_executable(bench_xls_export ${VORNADEL_ROOT}/bench/xls/ExportBench.cpp)
vornadel_cxx17(bench_xls_export)
target_compile_definitions(bench_xls_export PRIVATE VORNADEL_SOURCE_DIR="${VORNADEL_ROOT}")
target_link_libraries(bench_xls_export PRIVATE xls)
