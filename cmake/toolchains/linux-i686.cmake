# For 32-bit x86 with SSE2, built on Debian: packages g++-i686-linux-gnu and qemu-user, which
# runs what was built (ctest does so by itself). For this library and for programs that use it:
#
#     cmake -B build --toolchain cmake/toolchains/linux-i686.cmake
set(processor i686)
set(prefix i686-linux-gnu)
set(emulator qemu-i386)
include(${CMAKE_CURRENT_LIST_DIR}/detail/linux.cmake)

# The older unit keeps more digits than a double has, and so gives other results.
set(CMAKE_C_FLAGS_INIT "-msse2 -mfpmath=sse")
set(CMAKE_CXX_FLAGS_INIT "-msse2 -mfpmath=sse")
