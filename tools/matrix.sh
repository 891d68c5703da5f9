# ./dev matrix. Sourced by dev, whose functions it uses.
# shellcheck shell=bash

# Lists all ways to build that must produce the same results: a name, a builder (see `builder`), and
# the flags of a parent project. `refused` marks a build that must fail, with a part of its error
# message.
matrix_cells() {
  local compiler level
  for compiler in gcc clang; do
    for level in O0 O1 O2 O3 Os; do cell "$compiler-$level" "$compiler" "-$level"; done
    cell "$compiler-lto" "$compiler" -O3 -flto=auto
    cell "$compiler-v3" "$compiler" -O3 -march=x86-64-v3
    cell "$compiler-v4" "$compiler" -O3 -march=x86-64-v4
    # Flags that the library undoes.
    cell "$compiler-unsigned-char" "$compiler" -O3 -funsigned-char
    cell "$compiler-unsafe-math" "$compiler" -O3 -funsafe-math-optimizations
    cell "$compiler-associative" "$compiler" -O3 -fassociative-math -fno-signed-zeros \
      -fno-trapping-math
    cell "$compiler-reciprocal" "$compiler" -O3 -freciprocal-math
    cell "$compiler-rounding" "$compiler" -O3 -frounding-math
    cell "$compiler-assertions" "$compiler" -O3 -D_GLIBCXX_ASSERTIONS
    cell "$compiler-old-strings" "$compiler" -O3 -D_GLIBCXX_USE_CXX11_ABI=0
    cell "$compiler-no-exceptions" "$compiler" -O3 -fno-exceptions
    refused 'cannot be built with -ffast-math' "$compiler-fast-math" "$compiler" -O3 -ffast-math
    refused 'without -fshort-enums' "$compiler-short-enums" "$compiler" -O3 -fshort-enums
    refused 'without -fpack-struct' "$compiler-pack-struct" "$compiler" -O3 -fpack-struct
  done
  cell gcc-single "gcc" -O3 -fsingle-precision-constant
  cell clang-no-nans "clang" -O3 -fno-honor-nans
  cell clang14-libcxx clang14-libcxx -O3
  cell clang19-libcxx clang19-libcxx -O3
  cell i686 linux-i686 -O3
  refused 'needs doubles evaluated as doubles' i686-x87 linux-i686 -O3 -mfpmath=387
  cell aarch64 linux-aarch64 -O3
  cell aarch64-v8.3 linux-aarch64 -O3 -march=armv8.3-a
  cell armhf linux-armhf -O3
  cell riscv64 linux-riscv64 -O3
  cell ppc64le linux-ppc64le -O3 -fno-tree-vectorize  # see the preset of that name
  refused 'the byte order is little-endian and runs on no other' ppc64 big-endian -O3
  cell windows windows-x64 -O3
  cell wasm webassembly -O3
}

# builder NAME: installs the packages that it needs, and sets `arguments` to the options for CMake.
builder() {
  need_to_build
  arguments=(--toolchain "$PWD/cmake/toolchains/$1.cmake")
  case $1 in
    gcc) arguments=(-DCMAKE_CXX_COMPILER=g++) ;;
    clang)
      need clang
      arguments=(-DCMAKE_CXX_COMPILER=clang++)
      ;;
    clang14-libcxx)
      need clang-14
      unpack_libcxx 14
      arguments=(-DCMAKE_CXX_COMPILER=clang++-14 -DCMAKE_CXX_FLAGS="-stdlib=libc++ -nostdinc++ \
-isystem $libcxx/include/c++/v1" -DCMAKE_EXE_LINKER_FLAGS="-L$libcxx/lib -Wl,-rpath,$libcxx/lib"
        -DCMAKE_SHARED_LINKER_FLAGS="-L$libcxx/lib")
      ;;
    clang19-libcxx)
      need clang-19 libc++-19-dev libc++abi-19-dev
      arguments=(-DCMAKE_CXX_COMPILER=clang++-19 -DCMAKE_CXX_FLAGS=-stdlib=libc++)
      ;;
    big-endian)
      need g++-powerpc64-linux-gnu
      arguments=(-DCMAKE_SYSTEM_NAME=Linux -DCMAKE_SYSTEM_PROCESSOR=ppc64
                 -DCMAKE_CXX_COMPILER=powerpc64-linux-gnu-g++)
      ;;
    linux-i686) need g++-i686-linux-gnu qemu-user ;;
    linux-aarch64) need g++-aarch64-linux-gnu qemu-user ;;
    linux-armhf) need g++-arm-linux-gnueabihf qemu-user ;;
    linux-riscv64) need g++-riscv64-linux-gnu qemu-user ;;
    linux-ppc64le) need g++-powerpc64le-linux-gnu qemu-user ;;
    windows-x64)
      need g++-mingw-w64-x86-64-posix wine64
      . tools/windows.sh
      start_wine
      ;;
    webassembly) need emscripten node-acorn nodejs ;;
  esac
}

# unpack_libcxx VERSION: unpacks that version of LLVM's standard library into a folder, and sets
# `libcxx` to the folder. Only one version can be installed at a time.
unpack_libcxx() {
  local work=$PWD/build/libcxx-$1
  libcxx=$work/usr/lib/llvm-$1
  mkdir -p "$work"
  [[ -e $work/complete ]] || (
    cd "$work" &&
      apt-get download -qq "libc++-$1-dev" "libc++1-$1" "libc++abi-$1-dev" "libc++abi1-$1" \
        "libunwind-$1" "libunwind-$1-dev" &&
      printf '%s\n' ./*.deb | xargs -I '{}' dpkg -x '{}' . &&
      touch complete
  ) || fail "could not download libc++-$1-dev; is the network reachable?"
}

# cell NAME BUILDER FLAG...
cell() {
  local name=$1 log=build/matrix/$1.log said result started=$SECONDS
  [[ $wanted == ' ' || $wanted == *" $name "* ]] || return 0
  said=$(try_cell "$@" 3>&1 >"$log" 2>&1 || true)
  if [[ $said ]]; then
    passed=$((passed + 1))
    IFS='|' read -r _ _ _ result _ <<<"$said"
    printf '%-16s%s (%d s)\n' "$name" "$result" $((SECONDS - started))
    rows+="| \`$name\` | $said |"$'\n'
  else
    differing=$((differing + 1))
    printf '%-16s NOT AS EXPECTED; the last lines of %s:\n' "$name" "$log"
    tail -n 15 "$log" | sed 's/^/    /'
  fi
}

refused() { refusal=$1 cell "${@:2}"; }

# try_cell NAME BUILDER FLAG...: builds and runs one cell. If all is right, writes its row of the
# table to descriptor 3. The functions below use the folder `dir`.
try_cell() {
  local dir=build/matrix/$1 flags="${*:3}" arguments forms started
  builder "$2"
  cmake -G Ninja -B "$dir" -DCMAKE_BUILD_TYPE=Release -DZELVAN_BUILD_DIGESTS=ON \
    -DCMAKE_CXX_FLAGS_RELEASE="$flags" "${arguments[@]}" || return
  if [[ ${refusal:-} ]]; then
    if cmake --build "$dir" --target digests >"$dir/refusal" 2>&1; then
      echo "this build succeeded, but must be refused"
      return
    fi
    cat "$dir/refusal"
    grep -q "error: .*$refusal" "$dir/refusal" &&
      printf '%s | `%s` | | is refused |' "$(compiler_of)" "$flags" >&3
    return
  fi
  cmake --build "$dir" --target digests digests_consumer || return
  started=$SECONDS
  ctest --test-dir "$dir" -V -R '^digests/' && grep -q ' 0 tests failed out of 3$' "$dir.log" || return
  forms=$(forms_run)
  [[ $forms == *plain ]] || return
  printf '%s | `%s` | %s | agrees: %s | %d' "$(compiler_of)" "$flags" "$(run_by)" \
    "$forms" $((SECONDS - started)) >&3
}

# Prints the vector forms with which the digests ran, as the program reported them.
forms_run() {
  sed -n 's/^[0-9]* of [0-9]* as expected, \([a-z0-9]*\).*/\1/p' \
    "$dir/Testing/Temporary/LastTest.log" | sort -u | paste -sd , | sed 's/,/, /'
}

# Prints the name and version of the compiler.
compiler_of() {
  sed -nE 's/^set\(CMAKE_CXX_COMPILER_(ID|VERSION) "(.*)"\)$/\2/p' \
    "$dir"/CMakeFiles/*/CMakeCXXCompiler.cmake | sed 's/GNU/gcc/' | paste -sd ' '
}

# Prints the name and version of the emulator that runs the digests, or "this processor".
run_by() {
  local program
  program=$(sed -n '/vector_forms/s/^add_test([^"]*"\([^"]*\)".*/\1/p' \
    "$dir/tests/digests/CTestTestfile.cmake")
  case $program in
    */digests | */ld-linux*) echo "this processor" ;;
    *) echo "${program##*/} $("$program" --version | grep -oE '[0-9]+(\.[0-9]+)+' | head -n 1)" ;;
  esac
}

# matrix [--list | --table | CELL...]
matrix() {
  local is_for_table='' wanted refusal='' rows='' passed=0 differing=0 name known
  known=$(cell() { echo "$1"; } && matrix_cells)
  if [[ $* == --list ]]; then
    echo "$known"
    return
  elif [[ $* == --table ]]; then
    is_for_table=yes
    shift
  fi
  wanted=" ${*}${*:+ }"
  for name in "$@"; do
    grep -qxF -e "$name" <<<"$known" || fail "there is no cell '$name'; ./dev matrix --list prints all"
  done
  mkdir -p build/matrix
  ! command -v ccache >/dev/null || export CMAKE_CXX_COMPILER_LAUNCHER=ccache
  step "one result everywhere"
  matrix_cells
  printf '%d passed, %d failed\n' "$passed" "$differing"
  ((differing == 0)) || fail "some cells are not as expected"
  [[ ! $is_for_table ]] || write_table
}

# Writes the results into docs/exactness.md, between its marks.
write_table() {
  {
    printf '| cell | compiler | flags | run by | result | seconds |\n|---|---|---|---|---|---:|\n%s\n' "$rows"
    printf 'Seen on %s, where this processor is: %s. The seconds are those of the digests and of the second program below.\n' \
      "$(LC_ALL=C date '+%-d %B %Y')" "$(sed -n 's/^model name\s*: //p' /proc/cpuinfo | sort -u)"
  } >build/matrix/table.md
  sed -i -e '/^<!-- cells -->$/,/^<!-- end of cells -->$/ { //!d }' \
    -e '/^<!-- cells -->$/r build/matrix/table.md' docs/exactness.md
}
