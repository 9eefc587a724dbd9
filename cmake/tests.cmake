# Tests: one GoogleTest executable per folder of tests/, each registered with CTest.
# vornadel_test(name folder libraries...) builds every tests/<folder>/*.cpp into one executable.
function(vornadel_test name folder)
  file(GLOB sources CONFIGURE_DEPENDS ${VORNADEL_ROOT}/tests/${folder}/*.cpp)
  add_executable(${name} ${sources})
  vornadel_cxx17(${name})
  target_include_directories(${name} PRIVATE ${VORNADEL_ROOT}/tests ${VORNADEL_ROOT}/host/src)
  target_link_libraries(${name} PRIVATE ${ARGN} GTest::gtest GTest::gtest_main)
  add_test(NAME ${name} COMMAND ${name} WORKING_DIRECTORY ${VORNADEL_ROOT})
  set_tests_properties(${name} PROPERTIES ENVIRONMENT "VORNADEL_SOURCE_DIR=${VORNADEL_ROOT};VORNADEL_BINARY_DIR=${CMAKE_BINARY_DIR}")
endfunction()

# Each area keeps its test targets in cmake/tests-<area>.cmake. The Windows suite (under Wine)
# has every area but the generator's (not built for Windows) and the check of the NX interface,
# which is compiler-independent (docs/windows.md).
if(WIN32)
  set(VORNADEL_TEST_FRAGMENTS)
  foreach(area platform host config editing nxkit crossbuild xls commands runner stdparts bomdiff)
    list(APPEND VORNADEL_TEST_FRAGMENTS ${VORNADEL_ROOT}/cmake/tests-${area}.cmake)
  endforeach()
else()
  file(GLOB VORNADEL_TEST_FRAGMENTS CONFIGURE_DEPENDS ${VORNADEL_ROOT}/cmake/tests-*.cmake)
endif()
foreach(fragment ${VORNADEL_TEST_FRAGMENTS})
  include(${fragment})
endforeach()
if(WIN32)
  vornadel_wine_fixtures()
endif()

# The sanitizer build checks leaks too; the one deliberate leak is suppressed by name.
if(VORNADEL_SANITIZE)
  get_property(VORNADEL_ALL_TESTS DIRECTORY PROPERTY TESTS)
  set_property(TEST ${VORNADEL_ALL_TESTS} APPEND PROPERTY ENVIRONMENT
    "LSAN_OPTIONS=suppressions=${VORNADEL_ROOT}/tools/lsan-suppressions.txt")
endif()
