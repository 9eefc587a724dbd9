# The command-line runner: runs a plug-in on a part file inside the host. Everything but main()
# is a library of its own, so that the runner's tests can call it directly.
file(GLOB RUNNER_SOURCES CONFIGURE_DEPENDS ${VORNADEL_ROOT}/apps/vornadel-host/*.cpp)
list(FILTER RUNNER_SOURCES EXCLUDE REGEX "/main\\.cpp$")
add_library(vornadel-host-core STATIC ${RUNNER_SOURCES})
vornadel_cxx17(vornadel-host-core)
target_include_directories(vornadel-host-core
  PUBLIC ${VORNADEL_ROOT}/apps/vornadel-host ${VORNADEL_ROOT}/host/src ${VORNADEL_ROOT}/src)
# The bundled samples and dialog file are found in the checkout the runner was built from.
target_compile_definitions(vornadel-host-core PRIVATE VORNADEL_SOURCE_DIR="${VORNADEL_ROOT}")
target_link_libraries(vornadel-host-core PUBLIC nxhost xls ${CMAKE_DL_LIBS})
if(NOT WIN32)
  # Line editing and history at the runner's prompt (Debian: libedit-dev).
  find_path(EDITLINE_INCLUDE_DIR editline/readline.h)
  find_library(EDITLINE_LIBRARY edit)
  if(NOT EDITLINE_INCLUDE_DIR OR NOT EDITLINE_LIBRARY)
    message(FATAL_ERROR "libedit not found: install libedit-dev (./dev.sh installs it)")
  endif()
  target_include_directories(vornadel-host-core PRIVATE ${EDITLINE_INCLUDE_DIR})
  target_compile_definitions(vornadel-host-core PRIVATE VORNADEL_HAVE_LIBEDIT)
  target_link_libraries(vornadel-host-core PUBLIC ${EDITLINE_LIBRARY})
endif()
if(WIN32)
  # CommandLineToArgvW: the arguments as the wide command line gives them.
  target_link_libraries(vornadel-host-core PUBLIC shell32)
endif()

add_executable(vornadel-host ${VORNADEL_ROOT}/apps/vornadel-host/main.cpp)
vornadel_cxx17(vornadel-host)
target_link_libraries(vornadel-host PRIVATE vornadel-host-core)
# The runner loads the plug-in (libVornadel.so, Vornadel.dll) at run time, as NX loads the DLL;
# build it with the runner.
add_dependencies(vornadel-host Vornadel)
