# The export that the Linux and the Windows builds must write alike, byte for byte: the Linux
# suite keeps its workbook in build/crossbuild/, the Windows suite compares with it.
vornadel_test(crossbuild_tests crossbuild Vornadel bodyinfo nxhost)
target_sources(crossbuild_tests PRIVATE ${VORNADEL_ROOT}/tests/xls/XlsTestSupport.cpp)
target_include_directories(crossbuild_tests PRIVATE ${NLOHMANN_JSON_INCLUDE} ${VORNADEL_ROOT}/libs/xls)
if(WIN32)
  set(VORNADEL_LINUX_BUILD ${VORNADEL_ROOT}/build CACHE PATH "The Linux build whose export the Windows build must match")
  set_property(TEST crossbuild_tests APPEND PROPERTY ENVIRONMENT "VORNADEL_LINUX_BINARY_DIR=${VORNADEL_LINUX_BUILD}")
endif()
