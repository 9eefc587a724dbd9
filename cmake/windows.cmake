# The Windows build (build-win/, cmake/toolchains/mingw-w64.cmake): everything built with
# MinGW-w64, the tests run under Wine.

# GoogleTest and nlohmann-json come from Debian's packages as sources and headers: GoogleTest is
# built here with the MinGW compilers, and the JSON header is copied so that no Linux include
# folder reaches a Windows compile.
set(BUILD_GMOCK OFF CACHE BOOL "" FORCE)
set(INSTALL_GTEST OFF CACHE BOOL "" FORCE)
add_subdirectory(/usr/src/googletest ${CMAKE_BINARY_DIR}/googletest EXCLUDE_FROM_ALL)
file(COPY /usr/include/nlohmann DESTINATION ${CMAKE_BINARY_DIR}/include)
set(NLOHMANN_JSON_INCLUDE ${CMAKE_BINARY_DIR}/include CACHE PATH "" FORCE)
# On Linux the header is on the compiler's own path; here every target gets the copy's folder.
include_directories(${NLOHMANN_JSON_INCLUDE})

# A DLL that exports everything it defines (and nothing of the MinGW runtime linked into it).
set(VORNADEL_EXPORT_ALL -Wl,--export-all-symbols
    -Wl,--exclude-libs,libgcc.a:libgcc_eh.a:libstdc++.a:libwinpthread.a:libpthread.a:libmingwex.a:libmingw32.a)

# Every test program runs under Wine in the prefix build-win/wine, with the ANSI code page 936
# (tools/wine/wine.sh).
set(VORNADEL_WINE ${VORNADEL_ROOT}/tools/wine/wine.sh ${CMAKE_BINARY_DIR})
set(CMAKE_CROSSCOMPILING_EMULATOR ${VORNADEL_WINE} run)

# The prefix is made when missing and a persistent wineserver started before the first Windows
# test; it is stopped after the last one (CTest fixtures, so that any subset of the tests gets
# both). Without a server kept running each test would start its own and CTest would wait for
# the background processes it leaves.
function(vornadel_wine_fixtures)
  add_test(NAME wine_start COMMAND ${VORNADEL_WINE} start)
  add_test(NAME wine_stop COMMAND ${VORNADEL_WINE} stop)
  set_tests_properties(wine_start PROPERTIES FIXTURES_SETUP wine)
  set_tests_properties(wine_stop PROPERTIES FIXTURES_CLEANUP wine)
  get_property(tests DIRECTORY ${VORNADEL_ROOT} PROPERTY TESTS)
  # The kit's check runs no Windows program.
  list(REMOVE_ITEM tests wine_start wine_stop nxkit_layout)
  set_tests_properties(${tests} PROPERTIES FIXTURES_REQUIRED wine)
  # Drive D: of the prefix is one folder, and so are the user's desktop and the transcripts'
  # C:\VDConfig; the dialogs' windows are real windows on the prefix's one desktop, where a test
  # that looks for a window by its title would find another test's. The tests that use any of
  # them take turns.
  foreach(test ${tests})
    if(test MATCHES "^(host_tests|config_tests|editing_tests|crossbuild_tests|commands_tests|stdparts_tests.*|transcript_.*|runner_win_.*)$")
      set_tests_properties(${test} PROPERTIES RESOURCE_LOCK wine-drive-d)
    endif()
  endforeach()
endfunction()
