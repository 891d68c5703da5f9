# Cross compiles for 32-bit x86 with SSE2 on Debian: needs the packages g++-i686-linux-gnu and
# qemu-user; ctest runs programs under qemu if necessary. For this library and for programs that use
# it:
#
#     cmake -B build --toolchain cmake/toolchains/linux-i686.cmake
set(processor i686)
set(prefix i686-linux-gnu)
set(emulator qemu-i386)
include(${CMAKE_CURRENT_LIST_DIR}/detail/linux.cmake)

# An x86-64 machine runs these programs without qemu, if its kernel supports them.
set(loader /usr/${prefix}/lib/ld-linux.so.2)
execute_process(COMMAND ${loader} --version RESULT_VARIABLE failure OUTPUT_QUIET ERROR_QUIET)
if(failure EQUAL 0)
  set(CMAKE_CROSSCOMPILING_EMULATOR ${loader} --library-path /usr/${prefix}/lib)
endif()

# SSE2, since the x87 unit keeps more digits than a double has and produces other results.
set(CMAKE_C_FLAGS_INIT "-msse2 -mfpmath=sse")
set(CMAKE_CXX_FLAGS_INIT "-msse2 -mfpmath=sse")
