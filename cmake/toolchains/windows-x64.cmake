# Cross compiles for 64-bit Windows on Debian: needs the packages g++-mingw-w64-x86-64-posix, and
# wine64, under which ctest runs programs. For this library and for programs that use it:
#
#     cmake -B build --toolchain cmake/toolchains/windows-x64.cmake
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)

set(prefix x86_64-w64-mingw32)
set(CMAKE_C_COMPILER ${prefix}-gcc-posix)  # this variant supports the threads of the standard library
set(CMAKE_CXX_COMPILER ${prefix}-g++-posix)
set(CMAKE_RC_COMPILER ${prefix}-windres)

# Searches libraries and headers below that folder and in CMAKE_PREFIX_PATH, and programs on this
# machine.
set(CMAKE_FIND_ROOT_PATH /usr/${prefix})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE BOTH)

find_program(ZELVAN_WINE NAMES wine64 wine PATHS /usr/lib/wine)
if(ZELVAN_WINE)
  set(CMAKE_CROSSCOMPILING_EMULATOR ${ZELVAN_WINE})
endif()
