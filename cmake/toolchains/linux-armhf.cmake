# Cross compiles for 32-bit ARM on Debian: needs the packages g++-arm-linux-gnueabihf and
# qemu-user; ctest runs programs under qemu. For this library and for programs that use it:
#
#     cmake -B build --toolchain cmake/toolchains/linux-armhf.cmake
set(processor arm)
set(prefix arm-linux-gnueabihf)
set(emulator qemu-arm)
include(${CMAKE_CURRENT_LIST_DIR}/detail/linux.cmake)
