# Conformance tests of the host against NX 8.5: one executable for every file of tests/host/.
vornadel_test(host_tests host nxhost)
# Driver.hpp speaks of platform::LocalTime (src/platform/Desktop.h).
target_include_directories(host_tests PRIVATE ${VORNADEL_ROOT}/src)
# On Windows the window calls the tests make are the plug-in's Win32 ones, over the host's real
# windows.
if(WIN32)
  target_link_libraries(host_tests PRIVATE vornadel_platform)
endif()
