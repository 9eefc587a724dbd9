# The plug-in: Vornadel (Vornadel.dll in NX; libVornadel.so in the host), everything under src/.
# The POSIX platform layer is compiled here; the parts of the platform that the desktop session
# offers (clock, opening files, dialog windows) come from the host on POSIX.
file(GLOB_RECURSE VORNADEL_SOURCES CONFIGURE_DEPENDS ${VORNADEL_ROOT}/src/*.cpp)
list(FILTER VORNADEL_SOURCES EXCLUDE REGEX "/src/platform/win32/")
add_library(Vornadel SHARED ${VORNADEL_SOURCES})
vornadel_cxx98(Vornadel)
target_include_directories(Vornadel PUBLIC ${VORNADEL_ROOT}/src ${VORNADEL_NX_INCLUDE})
target_link_libraries(Vornadel PUBLIC readconfig bodyinfo xls)
if(NOT VORNADEL_NX_SDK)
  target_link_libraries(Vornadel PUBLIC nxhost)
endif()
