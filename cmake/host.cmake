# The host: an in-process stand-in for the part of NX 8.5 that the plug-in uses. A shared
# library, as NX's own libraries are, so that the runner and every plug-in it loads share one
# session.
find_path(NLOHMANN_JSON_INCLUDE nlohmann/json.hpp REQUIRED)
file(GLOB_RECURSE NXHOST_SOURCES CONFIGURE_DEPENDS ${VORNADEL_ROOT}/host/src/*.cpp)
add_library(nxhost SHARED ${NXHOST_SOURCES})
vornadel_cxx17(nxhost)
target_include_directories(nxhost
  PUBLIC ${VORNADEL_ROOT}/host/include
  PRIVATE ${VORNADEL_ROOT}/host/src ${VORNADEL_ROOT}/src ${NLOHMANN_JSON_INCLUDE})
target_link_libraries(nxhost PUBLIC ${CMAKE_DL_LIBS})
if(WIN32)
  # NX's headers import every declaration from NX's DLLs on Windows; the host is the DLL that
  # defines them, so it compiles them undecorated and exports everything it defines.
  target_compile_definitions(nxhost PRIVATE WNT_STATIC_LINK)
  target_link_options(nxhost PRIVATE ${VORNADEL_EXPORT_ALL})
  target_link_libraries(nxhost PUBLIC shell32)
endif()
