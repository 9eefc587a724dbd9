# Benchmarks: programs run on demand, not tests (bench/README.md).

# The first display of the standard-part tree for generated moulds of 100, 1,000 and 5,000
# standard-part bodies: the plug-in linked in directly, as the plug-in tests do.
add_executable(bench_first_display ${VORNADEL_ROOT}/bench/first_display/FirstDisplay.cpp)
vornadel_cxx17(bench_first_display)
target_include_directories(bench_first_display PRIVATE ${VORNADEL_ROOT}/host/src)
# The bundled samples and dialog file are found in the checkout the bench was built from.
target_compile_definitions(bench_first_display PRIVATE VORNADEL_SOURCE_DIR="${VORNADEL_ROOT}")
target_link_libraries(bench_first_display PRIVATE Vornadel nxhost moldgen-core)

# Saving and exporting the BOM of generated moulds of 100, 1,000 and 5,000 standard-part bodies
# through the dialog's buttons: the plug-in linked in directly, as for the first display.
add_executable(bench_save_export ${VORNADEL_ROOT}/bench/save_export/SaveExport.cpp)
vornadel_cxx17(bench_save_export)
target_include_directories(bench_save_export PRIVATE ${VORNADEL_ROOT}/host/src)
target_compile_definitions(bench_save_export PRIVATE VORNADEL_SOURCE_DIR="${VORNADEL_ROOT}")
target_link_libraries(bench_save_export PRIVATE Vornadel nxhost moldgen-core)

# begin bench_large_moulds (bench/large_moulds/compare.py copies this block into older checkouts)
# First display, group, dissolve, save, export and memory for generated moulds of 5,000, 20,000 and
# 50,000 standard-part bodies: the plug-in linked in directly, as for the first display.
add_executable(bench_large_moulds ${VORNADEL_ROOT}/bench/large_moulds/LargeMoulds.cpp)
vornadel_cxx17(bench_large_moulds)
target_include_directories(bench_large_moulds PRIVATE ${VORNADEL_ROOT}/host/src)
target_compile_definitions(bench_large_moulds PRIVATE VORNADEL_SOURCE_DIR="${VORNADEL_ROOT}")
target_link_libraries(bench_large_moulds PRIVATE Vornadel nxhost moldgen-core)
# end bench_large_moulds

# The workbook job of the export done by libs/xls, Apache POI HSSF and SheetJS side by side; the
# peers are installed into build/bench-peers on the first run.
add_executable(bench_xls_compare ${VORNADEL_ROOT}/bench/xls/Compare.cpp)
vornadel_cxx17(bench_xls_compare)
target_compile_definitions(bench_xls_compare PRIVATE VORNADEL_SOURCE_DIR="${VORNADEL_ROOT}"
                                                     VORNADEL_BINARY_DIR="${CMAKE_BINARY_DIR}")
target_include_directories(bench_xls_compare PRIVATE ${VORNADEL_ROOT}/host/src)
# nxhost for its UTF-8 writer: the job is handed to the other libraries as UTF-8.
target_link_libraries(bench_xls_compare PRIVATE xls nxhost)

# vornadel-bomdiff on two BOMs of 5,000 lines: read both, compare, print, write the change workbook.
add_executable(bench_bomdiff ${VORNADEL_ROOT}/bench/bomdiff/BomdiffBench.cpp)
vornadel_cxx17(bench_bomdiff)
target_compile_definitions(bench_bomdiff PRIVATE VORNADEL_SOURCE_DIR="${VORNADEL_ROOT}")
target_link_libraries(bench_bomdiff PRIVATE bomdiff-core)
