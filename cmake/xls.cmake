# libs/xls: the template workbook engine (C++98), linked into the plug-in.
file(GLOB XLS_SOURCES CONFIGURE_DEPENDS ${VORNADEL_ROOT}/libs/xls/*.cpp)
add_library(xls STATIC ${XLS_SOURCES})
vornadel_cxx98(xls)
target_include_directories(xls PUBLIC ${VORNADEL_ROOT}/libs/xls)

# xlsfill IN.xls OUT.xls: writes cells given on standard input into a workbook (tools/xlsfill).
add_executable(xlsfill ${VORNADEL_ROOT}/tools/xlsfill/main.cpp)
vornadel_cxx17(xlsfill)
target_link_libraries(xlsfill PRIVATE xls)
