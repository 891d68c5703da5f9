# For 64-bit Windows, built on Debian: packages g++-mingw-w64-x86-64-posix, and wine64 to run what
# was built (ctest does so by itself). For this library and for programs that use it alike:
#
#     cmake -B build --toolchain cmake/toolchains/windows-x64.cmake
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)

set(prefix x86_64-w64-mingw32)
set(CMAKE_C_COMPILER ${prefix}-gcc-posix)  # with the threads that the standard library needs
set(CMAKE_CXX_COMPILER ${prefix}-g++-posix)
set(CMAKE_RC_COMPILER ${prefix}-windres)

# Libraries and headers come from there, and from where CMAKE_PREFIX_PATH leads; tools from here.
set(CMAKE_FIND_ROOT_PATH /usr/${prefix})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE BOTH)

find_program(ZELVAN_WINE NAMES wine64 wine PATHS /usr/lib/wine)
if(ZELVAN_WINE)
  set(CMAKE_CROSSCOMPILING_EMULATOR ${ZELVAN_WINE})
endif()
