# For 32-bit ARM, built on Debian: packages g++-arm-linux-gnueabihf and qemu-user, which
# runs what was built (ctest does so by itself). For this library and for programs that use it:
#
#     cmake -B build --toolchain cmake/toolchains/linux-armhf.cmake
set(processor arm)
set(prefix arm-linux-gnueabihf)
set(emulator qemu-arm)
include(${CMAKE_CURRENT_LIST_DIR}/detail/linux.cmake)
