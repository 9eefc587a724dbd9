# The plug-in: Vornadel (Vornadel.dll in NX; libVornadel.so in the host), everything under src/.
# The operating-system part of the platform layer comes from vornadel_platform (cmake/libs.cmake).
# The parts of the platform that the desktop session offers (clock, opening files) are Win32
# inside NX; inside the host they come from the host. The dialog windows are Win32 on Windows
# (vornadel_platform) and the host's on POSIX.
file(GLOB_RECURSE VORNADEL_SOURCES CONFIGURE_DEPENDS ${VORNADEL_ROOT}/src/*.cpp)
list(FILTER VORNADEL_SOURCES EXCLUDE REGEX "/src/platform/(common|posix|win32)/")
if(WIN32 AND VORNADEL_NX_SDK)
  list(APPEND VORNADEL_SOURCES ${VORNADEL_ROOT}/src/platform/win32/Desktop.cpp)
endif()
add_library(Vornadel SHARED ${VORNADEL_SOURCES})
vornadel_cxx98(Vornadel)
target_include_directories(Vornadel PUBLIC ${VORNADEL_ROOT}/src ${VORNADEL_NX_INCLUDE})
target_link_libraries(Vornadel PUBLIC readconfig bodyinfo xls vornadel_platform)
# NX runs a DLL on a seat without an NX Open author licence only when NX's signing tool has
# signed the block this resource script puts into it (docs/install.md, signing).
if(VORNADEL_NX_SDK AND WIN32)
  target_sources(Vornadel PRIVATE ${VORNADEL_ROOT}/src/shell/NXSigningResource.rc)
endif()
if(NOT VORNADEL_NX_SDK)
  target_link_libraries(Vornadel PUBLIC nxhost)
  # The tests call the plug-in's functions directly, as they do on Linux where every symbol of a
  # library is visible.
  if(WIN32)
    target_link_options(Vornadel PRIVATE ${VORNADEL_EXPORT_ALL})
  endif()
endif()
