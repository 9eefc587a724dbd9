# moldgen: realistic mould part files of any size (tools/moldgen). Everything but main() is a
# library of its own, so that the generator's tests call it directly.
file(GLOB MOLDGEN_SOURCES CONFIGURE_DEPENDS ${VORNADEL_ROOT}/tools/moldgen/*.cpp)
list(FILTER MOLDGEN_SOURCES EXCLUDE REGEX "/main\\.cpp$")
add_library(moldgen-core STATIC ${MOLDGEN_SOURCES})
vornadel_cxx17(moldgen-core)
target_include_directories(moldgen-core PUBLIC ${VORNADEL_ROOT}/tools/moldgen PRIVATE ${NLOHMANN_JSON_INCLUDE})

add_executable(moldgen ${VORNADEL_ROOT}/tools/moldgen/main.cpp)
vornadel_cxx17(moldgen)
target_link_libraries(moldgen PRIVATE moldgen-core)
