# Cross compiles for 64-bit RISC-V on Debian: needs the packages g++-riscv64-linux-gnu and
# qemu-user; ctest runs programs under qemu. For this library and for programs that use it:
#
#     cmake -B build --toolchain cmake/toolchains/linux-riscv64.cmake
set(processor riscv64)
set(prefix riscv64-linux-gnu)
set(emulator qemu-riscv64)
include(${CMAKE_CURRENT_LIST_DIR}/detail/linux.cmake)
