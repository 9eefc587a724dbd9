# The NX link check (tools/nxlink): the sources of Vornadel.dll, readconfig.dll and bodyinfo.dll,
# compiled for the Microsoft ABI against host/include, need only symbols NX 8.5 exports; and the
# check names a symbol that stops matching (tests/nxlink/check_can_fail.py).
# With VORNADEL_NX_SDK_COPY naming a copy of NX 8.5's UGOPEN folder it also runs against NX's own
# headers and links the three DLLs against NX's import libraries (docs/install.md).
find_package(Python3 REQUIRED COMPONENTS Interpreter)
add_test(NAME nxlink_host
  COMMAND ${Python3_EXECUTABLE} ${VORNADEL_ROOT}/tools/nxlink/nxlink_check.py --source ${VORNADEL_ROOT}
    --include ${VORNADEL_ROOT}/host/include --work ${CMAKE_BINARY_DIR}/nxlink/host --jobs 2)
add_test(NAME nxlink_check_can_fail
  COMMAND ${Python3_EXECUTABLE} ${VORNADEL_ROOT}/tests/nxlink/check_can_fail.py ${VORNADEL_ROOT}
    ${CMAKE_BINARY_DIR}/nxlink/can-fail)
set(VORNADEL_NX_SDK_COPY "" CACHE PATH "a copy of NX 8.5's UGOPEN folder for the NX link check")
set(nx_sdk_copy "${VORNADEL_NX_SDK_COPY}")
if(NOT nx_sdk_copy)
  set(nx_sdk_copy "$ENV{VORNADEL_NX_SDK_COPY}")
endif()
if(nx_sdk_copy)
  add_test(NAME nxlink_nx85_sdk
    COMMAND ${Python3_EXECUTABLE} ${VORNADEL_ROOT}/tools/nxlink/nxlink_check.py --source ${VORNADEL_ROOT}
      --include ${nx_sdk_copy} --sdk ${nx_sdk_copy} --work ${CMAKE_BINARY_DIR}/nxlink/sdk --jobs 2)
endif()
# Sources that hold Chinese text carry a UTF-8 byte-order mark, so that NX's Visual Studio reads
# them as UTF-8 (docs/install.md).
add_test(NAME sources_marked_utf8
  COMMAND ${Python3_EXECUTABLE} ${VORNADEL_ROOT}/tests/nxlink/check_source_marks.py ${VORNADEL_ROOT})
