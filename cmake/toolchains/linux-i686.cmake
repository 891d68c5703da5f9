# For 32-bit x86 with SSE2, built on Debian: packages g++-i686-linux-gnu and qemu-user, which runs
# what was built, if it has to (ctest sees to that). For this library and for programs that use it:
#
#     cmake -B build --toolchain cmake/toolchains/linux-i686.cmake
set(processor i686)
set(prefix i686-linux-gnu)
set(emulator qemu-i386)
include(${CMAKE_CURRENT_LIST_DIR}/detail/linux.cmake)

# An x86-64 processor runs these programs itself, if its kernel knows how to.
set(loader /usr/${prefix}/lib/ld-linux.so.2)
execute_process(COMMAND ${loader} --version RESULT_VARIABLE failure OUTPUT_QUIET ERROR_QUIET)
if(failure EQUAL 0)
  set(CMAKE_CROSSCOMPILING_EMULATOR ${loader} --library-path /usr/${prefix}/lib)
endif()

# The older unit keeps more digits than a double has, and so gives other results.
set(CMAKE_C_FLAGS_INIT "-msse2 -mfpmath=sse")
set(CMAKE_CXX_FLAGS_INIT "-msse2 -mfpmath=sse")
