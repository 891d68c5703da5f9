# Shared by the toolchain files for Linux. Each sets `processor`, the `prefix` of Debian's cross
# compiler, and the `emulator` of qemu-user that runs programs.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR ${processor})
set(CMAKE_C_COMPILER ${prefix}-gcc)
set(CMAKE_CXX_COMPILER ${prefix}-g++)

# Searches libraries and headers below that folder and in CMAKE_PREFIX_PATH, and programs on this
# machine.
set(CMAKE_FIND_ROOT_PATH /usr/${prefix})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE BOTH)

find_program(ZELVAN_EMULATOR ${emulator})
if(ZELVAN_EMULATOR)
  set(CMAKE_CROSSCOMPILING_EMULATOR ${ZELVAN_EMULATOR} -L /usr/${prefix})
endif()
