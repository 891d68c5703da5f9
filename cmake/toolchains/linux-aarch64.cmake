# For 64-bit ARM, built on Debian: packages g++-aarch64-linux-gnu and qemu-user, which
# runs what was built (ctest does so by itself). For this library and for programs that use it:
#
#     cmake -B build --toolchain cmake/toolchains/linux-aarch64.cmake
set(processor aarch64)
set(prefix aarch64-linux-gnu)
set(emulator qemu-aarch64)
include(${CMAKE_CURRENT_LIST_DIR}/detail/linux.cmake)
