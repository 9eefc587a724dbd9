# Benchmarks: programs run on demand, not tests (bench/README.md).

# The first display of the standard-part tree for generated moulds of 100, 1,000 and 5,000
# standard-part bodies: the plug-in linked in directly, as the plug-in tests do.
add_executable(bench_first_display ${VORNADEL_ROOT}/bench/first_display/FirstDisplay.cpp)
vornadel_cxx17(bench_first_display)
target_include_directories(bench_first_display PRIVATE ${VORNADEL_ROOT}/host/src)
# The bundled samples and dialog file are found in the checkout the bench was built from.
target_compile_definitions(bench_first_display PRIVATE VORNADEL_SOURCE_DIR="${VORNADEL_ROOT}")
target_link_libraries(bench_first_display PRIVATE Vornadel nxhost moldgen-core)
