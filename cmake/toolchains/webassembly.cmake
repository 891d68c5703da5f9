# Cross compiles for WebAssembly on Debian: needs the packages emscripten and node-acorn, and
# nodejs, in which ctest runs programs. For this library and for programs that use it:
#
#     cmake -B build --toolchain cmake/toolchains/webassembly.cmake
#
# A program becomes a single JavaScript file for node. For a web page, add: target_link_options(page
# PRIVATE -sENVIRONMENT=web).
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE BOTH)  # searches CMAKE_PREFIX_PATH as well
set(ZELVAN_EMSCRIPTEN /usr/share/emscripten CACHE PATH "Where Emscripten is")
include(${ZELVAN_EMSCRIPTEN}/cmake/Modules/Platform/Emscripten.cmake)
set(CMAKE_SYSTEM_PROCESSOR wasm32)

# Emscripten's linker runs scripts in node, which search for acorn there.
set(ENV{NODE_PATH} /usr/share/nodejs)
set(CMAKE_C_LINKER_LAUNCHER ${CMAKE_COMMAND} -E env NODE_PATH=/usr/share/nodejs)
set(CMAKE_CXX_LINKER_LAUNCHER ${CMAKE_C_LINKER_LAUNCHER})

# Enables exceptions. With memory growth, a failed allocation returns null instead of ending the
# program.
set(CMAKE_CXX_FLAGS_INIT -fexceptions)
set(CMAKE_EXE_LINKER_FLAGS_INIT "-sENVIRONMENT=node -sSINGLE_FILE=1 -sALLOW_MEMORY_GROWTH=1")
