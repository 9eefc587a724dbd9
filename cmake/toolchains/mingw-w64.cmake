# Cross-building for 64-bit Windows with MinGW-w64 (Debian's mingw-w64 packages):
#   cmake -S . -B build-win -DCMAKE_TOOLCHAIN_FILE=cmake/toolchains/mingw-w64.cmake
# The -posix compilers: their threads are what GoogleTest needs.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)

set(VORNADEL_MINGW x86_64-w64-mingw32)
set(CMAKE_C_COMPILER ${VORNADEL_MINGW}-gcc-posix)
set(CMAKE_CXX_COMPILER ${VORNADEL_MINGW}-g++-posix)
set(CMAKE_RC_COMPILER ${VORNADEL_MINGW}-windres)

set(CMAKE_FIND_ROOT_PATH /usr/${VORNADEL_MINGW})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# Every binary carries its own copy of the MinGW runtime (libgcc, libstdc++, winpthread), so
# that a DLL or program needs nothing copied beside it.
set(CMAKE_EXE_LINKER_FLAGS_INIT "-static")
set(CMAKE_SHARED_LINKER_FLAGS_INIT "-static")
