# vornadel-bomdiff: the change list between two exported BOMs (docs/bomdiff.md). It reads and
# writes workbooks with the engine and prints as the runner does (its output and platform parts).
file(GLOB BOMDIFF_SOURCES CONFIGURE_DEPENDS ${VORNADEL_ROOT}/apps/vornadel-bomdiff/*.cpp)
add_executable(vornadel-bomdiff ${BOMDIFF_SOURCES})
vornadel_cxx17(vornadel-bomdiff)
target_link_libraries(vornadel-bomdiff PRIVATE xls vornadel-host-core)
# The change workbook template goes beside the program, where the program looks for it.
add_custom_command(TARGET vornadel-bomdiff POST_BUILD
  COMMAND ${CMAKE_COMMAND} -E copy_if_different "${VORNADEL_ROOT}/samples/bomdiff/标准件变更单.xls"
          "$<TARGET_FILE_DIR:vornadel-bomdiff>/标准件变更单.xls")
