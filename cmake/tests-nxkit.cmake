# The NX install kit (cmake/nxkit.cmake), installed from this build and checked: its layout, the
# entry points of Vornadel.dll, the menu file's MenuScript (tests/nxkit/check_kit.py).
if(WIN32)
  find_package(Python3 REQUIRED COMPONENTS Interpreter)
  add_test(NAME nxkit_layout
    COMMAND ${Python3_EXECUTABLE} ${VORNADEL_ROOT}/tests/nxkit/check_kit.py --cmake ${CMAKE_COMMAND}
            --build ${CMAKE_BINARY_DIR} --kit ${CMAKE_BINARY_DIR}/nxkit --objdump ${CMAKE_OBJDUMP}
            --source ${VORNADEL_ROOT})
endif()
