# The host: an in-process stand-in for the part of NX 8.5 that the plug-in uses. A shared
# library, as NX's own libraries are, so that the runner and every plug-in it loads share one
# session.
find_path(NLOHMANN_JSON_INCLUDE nlohmann/json.hpp REQUIRED)
file(GLOB_RECURSE NXHOST_SOURCES CONFIGURE_DEPENDS ${VORNADEL_ROOT}/host/src/*.cpp)
# The dialog windows: real windows on Windows, the host's own elsewhere.
if(WIN32)
  list(FILTER NXHOST_SOURCES EXCLUDE REGEX "/WindowsSimulated\\.cpp$")
else()
  list(FILTER NXHOST_SOURCES EXCLUDE REGEX "/WindowsWin32\\.cpp$")
endif()
# The rules of NX 8.5's dialog-file form (host/src/ui/DlxRules.tsv) go into the host as text.
set(NXHOST_DLX_RULES ${VORNADEL_ROOT}/host/src/ui/DlxRules.tsv)
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${NXHOST_DLX_RULES})
file(READ ${NXHOST_DLX_RULES} NXHOST_DLX_RULES_TEXT)
file(CONFIGURE OUTPUT ${CMAKE_BINARY_DIR}/generated/DlxRulesTable.cpp @ONLY CONTENT
  "// Made by cmake/host.cmake from host/src/ui/DlxRules.tsv.\nnamespace host::ui {\nextern const char kDlxRulesTable[];\nconst char kDlxRulesTable[] = R\"dlxrules(@NXHOST_DLX_RULES_TEXT@)dlxrules\";\n}\n")
add_library(nxhost SHARED ${NXHOST_SOURCES} ${CMAKE_BINARY_DIR}/generated/DlxRulesTable.cpp)
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
  target_link_libraries(nxhost PUBLIC shell32 user32)
endif()
