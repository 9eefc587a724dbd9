# The mould generator's tests: reproducibility, the command line, and generated moulds loaded in
# the host (tools/moldgen, cmake/tools-moldgen.cmake).
vornadel_test(moldgen_tests moldgen nxhost moldgen-core readconfig)
# Driver.hpp includes the platform interfaces; the bundled tables are read with the plug-in's reader.
target_include_directories(moldgen_tests PRIVATE ${VORNADEL_ROOT}/src)
add_dependencies(moldgen_tests moldgen)
