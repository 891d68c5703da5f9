#!/usr/bin/env bash
# consumers.sh SOURCE BUILD COMPILER WORK: installs the built library and moves the installed tree.
# Builds and runs one program in C++ through find_package, pkg-config and add_subdirectory, and one
# in C through find_package.
set -euo pipefail
source=$1 build=$2 compiler=$3 work=$4
here=$source/tests/install
rm -rf "$work"
mkdir -p "$work"

fail() {
  echo "consumers: $*" >&2
  exit 1
}

# says_ok WAY PROGRAM
says_ok() {
  local said
  said=$("$2") || fail "$1: the consumer exited with status $?"
  [[ $said == "a region of my own, hit; 0x0p+0; tokens as expected" ]] || fail "$1: the consumer printed '$said'"
  echo "$1: ok"
}

# configure_and_build SOURCE BUILD ARGUMENT...
configure_and_build() {
  cmake -G Ninja -S "$1" -B "$2" -DCMAKE_CXX_COMPILER="$compiler" --no-warn-unused-cli \
    "${@:3}" >"$2.log" 2>&1 &&
    cmake --build "$2" >>"$2.log" 2>&1 || {
    cat "$2.log" >&2
    fail "$1 did not build"
  }
}

cmake --install "$build" --prefix "$work/first" >/dev/null
mv "$work/first" "$work/moved"

configure_and_build "$here/consumer" "$work/find_package" -DCMAKE_PREFIX_PATH="$work/moved"
says_ok find_package "$work/find_package/consumer"

guide_example() {
  python3 "$source/tests/guide/guide_example.py" "$1" "$source/docs/other_languages.md#c" "$2"
}
guide_example extract "$work/program.c"
configure_and_build "$here/in_c" "$work/in_c" -DCMAKE_PREFIX_PATH="$work/moved" \
  -DPROGRAM="$work/program.c"
guide_example run "$work/in_c/program" || fail "find_package, in C: the program failed"
echo "find_package, in C: ok"

pc=$(find "$work/moved" -name zelvan.pc)
export PKG_CONFIG_PATH=${pc%/*}
# shellcheck disable=SC2046  # the flags are words
"$compiler" -std=c++17 -Wall -Wextra -Wpedantic -Werror "$here/consumer/main.cpp" \
  -o "$work/pkg_config" $(pkg-config --cflags --libs zelvan)
libdir=$(pkg-config --variable=libdir zelvan)
LD_LIBRARY_PATH=$libdir says_ok pkg-config "$work/pkg_config"

# A parent project with our sources as a subproject. Its flags would fuse products and sums, it uses
# unity builds and link-time optimisation, and it must install and test nothing of ours.
configure_and_build "$here/subproject" "$work/subproject" -DZELVAN_SOURCE="$source" \
  -DCMAKE_CXX_FLAGS="-O3 -march=native -ffp-contract=fast" -DCMAKE_UNITY_BUILD=ON \
  -DCMAKE_INTERPROCEDURAL_OPTIMIZATION=ON
python3 "$source/tests/interface/no_fused_arithmetic.py" objdump \
  "$(find "$work/subproject" -name libzelvan.so)" || fail "add_subdirectory: the library contains fused instructions"
says_ok add_subdirectory "$work/subproject/consumer"
cmake --install "$work/subproject" --prefix "$work/parent" >/dev/null
installed=$(cd "$work/parent" && find . -type f)
[[ $installed == ./bin/consumer ]] || fail "add_subdirectory: the parent installed more than its consumer: $installed"
ctest --test-dir "$work/subproject" -N | grep -q '^Total Tests: 0$' ||
  fail "add_subdirectory: the parent has tests of ours"
