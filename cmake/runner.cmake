# The command-line runner: runs a plug-in on a part file inside the host.
file(GLOB RUNNER_SOURCES CONFIGURE_DEPENDS ${VORNADEL_ROOT}/apps/vornadel-host/*.cpp)
add_executable(vornadel-host ${RUNNER_SOURCES})
vornadel_cxx17(vornadel-host)
target_include_directories(vornadel-host PRIVATE ${VORNADEL_ROOT}/host/src ${VORNADEL_ROOT}/apps/vornadel-host)
target_link_libraries(vornadel-host PRIVATE nxhost)
# The runner loads libVornadel.so at run time, as NX loads the DLL; build it with the runner.
add_dependencies(vornadel-host Vornadel)
