# For WebAssembly, built on Debian: packages emscripten and node-acorn, and nodejs to run what was
# built (ctest does so by itself). For this library and for programs that use it alike:
#
#     cmake -B build --toolchain cmake/toolchains/webassembly.cmake
#
# A program becomes one JavaScript file for node, with everything in it. One for a page says so:
# target_link_options(page PRIVATE -sENVIRONMENT=web).
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE BOTH)  # where CMAKE_PREFIX_PATH leads as well
set(ZELVAN_EMSCRIPTEN /usr/share/emscripten CACHE PATH "Where Emscripten is")
include(${ZELVAN_EMSCRIPTEN}/cmake/Modules/Platform/Emscripten.cmake)
set(CMAKE_SYSTEM_PROCESSOR wasm32)

# Emscripten's linker runs programs of its own in node, which look for acorn there.
set(ENV{NODE_PATH} /usr/share/nodejs)
set(CMAKE_C_LINKER_LAUNCHER ${CMAKE_COMMAND} -E env NODE_PATH=/usr/share/nodejs)
set(CMAKE_CXX_LINKER_LAUNCHER ${CMAKE_C_LINKER_LAUNCHER})

# What is thrown is caught, and a heap that can't grow answers so instead of ending the program.
set(CMAKE_CXX_FLAGS_INIT -fexceptions)
set(CMAKE_EXE_LINKER_FLAGS_INIT "-sENVIRONMENT=node -sSINGLE_FILE=1 -sALLOW_MEMORY_GROWTH=1")
