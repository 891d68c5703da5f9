# For little-endian POWER, built on Debian: packages g++-powerpc64le-linux-gnu and qemu-user, which
# runs what was built (ctest does so by itself). For this library and for programs that use it:
#
#     cmake -B build --toolchain cmake/toolchains/linux-ppc64le.cmake
set(processor ppc64le)
set(prefix powerpc64le-linux-gnu)
set(emulator qemu-ppc64le)
include(${CMAKE_CURRENT_LIST_DIR}/detail/linux.cmake)
