# vornadel-bomdiff: the change list between two exported BOMs (docs/bomdiff.md). It reads and
# writes workbooks with the engine and prints as the runner does (its output and platform parts).
# Everything but main() is a library of its own, which the benchmark calls directly.
file(GLOB BOMDIFF_SOURCES CONFIGURE_DEPENDS ${VORNADEL_ROOT}/apps/vornadel-bomdiff/*.cpp)
list(FILTER BOMDIFF_SOURCES EXCLUDE REGEX "/main\\.cpp$")
add_library(bomdiff-core STATIC ${BOMDIFF_SOURCES})
vornadel_cxx17(bomdiff-core)
target_include_directories(bomdiff-core PUBLIC ${VORNADEL_ROOT}/apps/vornadel-bomdiff)
target_link_libraries(bomdiff-core PUBLIC xls vornadel-host-core)

add_executable(vornadel-bomdiff ${VORNADEL_ROOT}/apps/vornadel-bomdiff/main.cpp)
vornadel_cxx17(vornadel-bomdiff)
target_link_libraries(vornadel-bomdiff PRIVATE bomdiff-core)
# The change workbook template goes beside the program, where the program looks for it.
add_custom_command(TARGET vornadel-bomdiff POST_BUILD
  COMMAND ${CMAKE_COMMAND} -E copy_if_different "${VORNADEL_ROOT}/samples/bomdiff/标准件变更单.xls"
          "$<TARGET_FILE_DIR:vornadel-bomdiff>/标准件变更单.xls")
