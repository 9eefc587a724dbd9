# The operating-system part of the platform layer (paths and files, environment, code pages, and
# on Windows the dialog windows on screen, which inside the host are its real windows):
# a static library linked into the plug-in and into readconfig, so that the table reader opens
# a table through the same path mapping as the plug-in without depending on the plug-in. Each
# binary keeps its copy to itself (hidden symbols), as a static library inside a DLL does.
# common/ holds what is the same on every system.
file(GLOB PLATFORM_OS_SOURCES CONFIGURE_DEPENDS ${VORNADEL_ROOT}/src/platform/common/*.cpp)
if(WIN32)
  list(APPEND PLATFORM_OS_SOURCES
    ${VORNADEL_ROOT}/src/platform/win32/CodePage.cpp
    ${VORNADEL_ROOT}/src/platform/win32/DialogWindows.cpp
    ${VORNADEL_ROOT}/src/platform/win32/Environment.cpp
    ${VORNADEL_ROOT}/src/platform/win32/Files.cpp)
else()
  file(GLOB PLATFORM_POSIX_SOURCES CONFIGURE_DEPENDS ${VORNADEL_ROOT}/src/platform/posix/*.cpp)
  list(APPEND PLATFORM_OS_SOURCES ${PLATFORM_POSIX_SOURCES})
endif()
add_library(vornadel_platform STATIC ${PLATFORM_OS_SOURCES})
vornadel_cxx98(vornadel_platform)
set_target_properties(vornadel_platform PROPERTIES CXX_VISIBILITY_PRESET hidden VISIBILITY_INLINES_HIDDEN ON)
target_include_directories(vornadel_platform PUBLIC ${VORNADEL_ROOT}/src)
if(WIN32)
  target_link_libraries(vornadel_platform PUBLIC shell32 user32)
endif()

# The two libraries that ship beside the plug-in as DLLs of their own.
file(GLOB READCONFIG_SOURCES CONFIGURE_DEPENDS ${VORNADEL_ROOT}/libs/readconfig/*.cpp)
add_library(readconfig SHARED ${READCONFIG_SOURCES})
vornadel_cxx98(readconfig)
target_compile_definitions(readconfig PRIVATE READCONFIG_BUILD)
target_include_directories(readconfig PUBLIC ${VORNADEL_ROOT}/src/platform)
target_link_libraries(readconfig PRIVATE vornadel_platform)

# readconfig-open-fuzz: a libFuzzer target for ReadConfigFile::OpenConfigFile over the reader and
# the platform's files and code pages (libs/readconfig/README.md).
if(VORNADEL_FUZZ AND NOT VORNADEL_NX_SDK)
  vornadel_fuzz_target(readconfig-open-fuzz SOURCE ${VORNADEL_ROOT}/tests/readconfig/fuzz/OpenFuzz.cpp
    LIBRARY ${READCONFIG_SOURCES} ${PLATFORM_OS_SOURCES} INCLUDE ${VORNADEL_ROOT}/src ${VORNADEL_ROOT}/src/platform)
endif()

file(GLOB BODYINFO_SOURCES CONFIGURE_DEPENDS ${VORNADEL_ROOT}/libs/bodyinfo/*.cpp)
add_library(bodyinfo SHARED ${BODYINFO_SOURCES})
vornadel_cxx98(bodyinfo)
target_compile_definitions(bodyinfo PRIVATE BODYINFO_BUILD)
target_include_directories(bodyinfo PUBLIC ${VORNADEL_ROOT}/src/platform ${VORNADEL_NX_INCLUDE})
if(NOT VORNADEL_NX_SDK)
  target_link_libraries(bodyinfo PUBLIC nxhost)
elseif(MSVC)
  # NX's import libraries, in the UGOPEN folder of an NX 8.5 installation.
  set(VORNADEL_NX_LIBRARIES libufun libugopenint libnxopencpp libnxopencpp_layer libnxopenuicpp)
  list(TRANSFORM VORNADEL_NX_LIBRARIES PREPEND ${VORNADEL_NX_SDK}/)
  list(TRANSFORM VORNADEL_NX_LIBRARIES APPEND .lib)
  target_link_libraries(bodyinfo PUBLIC ${VORNADEL_NX_LIBRARIES})
endif()
