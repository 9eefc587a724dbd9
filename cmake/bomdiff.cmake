# vornadel-bomdiff: the change list between two exported BOMs (docs/bomdiff.md). It reads and
# writes workbooks with the engine and prints as the runner does (its output and platform parts).
file(GLOB BOMDIFF_SOURCES CONFIGURE_DEPENDS ${VORNADEL_ROOT}/apps/vornadel-bomdiff/*.cpp)
add_executable(vornadel-bomdiff ${BOMDIFF_SOURCES})
vornadel_cxx17(vornadel-bomdiff)
# The bundled change workbook template is found in the checkout the program was built from when
# it is not beside the program.
target_compile_definitions(vornadel-bomdiff PRIVATE VORNADEL_SOURCE_DIR="${VORNADEL_ROOT}")
target_link_libraries(vornadel-bomdiff PRIVATE xls vornadel-host-core)
