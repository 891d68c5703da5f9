# Cross compiles for 64-bit ARM on Debian: needs the packages g++-aarch64-linux-gnu and
# qemu-user; ctest runs programs under qemu. For this library and for programs that use it:
#
#     cmake -B build --toolchain cmake/toolchains/linux-aarch64.cmake
set(processor aarch64)
set(prefix aarch64-linux-gnu)
set(emulator qemu-aarch64)
include(${CMAKE_CURRENT_LIST_DIR}/detail/linux.cmake)
