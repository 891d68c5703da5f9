# Cross compiles for little-endian POWER on Debian: needs the packages g++-powerpc64le-linux-gnu and
# qemu-user; ctest runs programs under qemu. For this library and for programs that use it:
#
#     cmake -B build --toolchain cmake/toolchains/linux-ppc64le.cmake
set(processor ppc64le)
set(prefix powerpc64le-linux-gnu)
set(emulator qemu-ppc64le)
include(${CMAKE_CURRENT_LIST_DIR}/detail/linux.cmake)
