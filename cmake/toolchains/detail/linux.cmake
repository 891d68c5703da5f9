# What the toolchain files for Linux have in common. Each names its `processor`, the `prefix` of
# Debian's cross compiler and the `emulator`, of qemu-user, that runs what was built.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR ${processor})
set(CMAKE_C_COMPILER ${prefix}-gcc)
set(CMAKE_CXX_COMPILER ${prefix}-g++)

# Libraries and headers come from there, and from where CMAKE_PREFIX_PATH leads; tools from here.
set(CMAKE_FIND_ROOT_PATH /usr/${prefix})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE BOTH)

find_program(ZELVAN_EMULATOR ${emulator})
if(ZELVAN_EMULATOR)
  set(CMAKE_CROSSCOMPILING_EMULATOR ${ZELVAN_EMULATOR} -L /usr/${prefix})
endif()
