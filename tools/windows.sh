# ./dev windows. Sourced by dev, whose functions it uses.
# shellcheck shell=bash

# Starts Wine with a Windows folder of its own, build/wine. Its processes end with this script.
start_wine() {
  export WINEPREFIX=$PWD/build/wine WINEDEBUG=-all WINEDLLOVERRIDES='mscoree,mshtml='
  export PATH=$PATH:/usr/lib/wine
  # Adds a third drive, on another file system if possible.
  mkdir -p "$WINEPREFIX"/{dosdevices,drive_c}
  ln -sfn ../drive_c "$WINEPREFIX/dosdevices/c:"
  ln -sfn / "$WINEPREFIX/dosdevices/z:"
  third_drive=$(mktemp -d -p /dev/shm zelvan-XXXXXX || mktemp -d)
  ln -sfn "$third_drive" "$WINEPREFIX/dosdevices/q:"
  trap 'wineserver64 -k || true; rm -rf "$third_drive"' EXIT
  wineserver64 -p
  wine64 wineboot --init >/dev/null 2>&1 || fail "Wine did not start; run wine64 wineboot to see why"
}

windows() {
  need_to_build g++-mingw-w64-x86-64-posix wine64 googletest binutils doxygen python3
  start_wine
  step "building for Windows"
  build windows
  step "all tests under Wine"
  run_tests windows -E 'exhaustive/colours'
  awk '/^\[       OK \]/ && !/DISABLED/ { run[$4] } /^\[  SKIPPED \] .* ms/ { skipped[$4] }
       END { for (name in skipped) if (!(name in run)) print "skipped:", name
             printf "%d tests passed\n", length(run) }' \
    build/windows/Testing/Temporary/LastTest.log
  package_for_windows
}

# Makes the zip package, unpacks it and builds the README's program with it.
package_for_windows() {
  local version name work=build/windows-package
  version=$(sed -n 's/^project(zelvan VERSION \([0-9.]*\).*/\1/p' CMakeLists.txt)
  name=zelvan-$version-windows-x64
  step "the package $name.zip"
  rm -rf "$work"
  mkdir -p "$work"
  cmake --install build/windows --prefix "$work/$name" >/dev/null
  (cd "$work" && cmake -E tar cf "../$name.zip" --format=zip "$name")
  rm -r "${work:?}/$name"
  (cd "$work" && cmake -E tar xf "../$name.zip")
  build_with_package tests/install/consumer consumer
  [[ $(wine64 "$work/consumer/consumer.exe") == "a region of my own, hit; 0x0p+0"* ]] ||
    fail "the consumer, which derives a class, fails with the package"
  cp -r tests/install/consumer "$work/readme"
  python3 tests/guide/guide_example.py extract README.md "$work/readme/main.cpp"
  build_with_package "$work/readme" program
  python3 tests/guide/guide_example.py run README.md wine64 "$PWD/$work/program/consumer.exe" ||
    fail "the README's program fails with the package"
  printf 'Created: build/%s.zip, %s bytes\n' "$name" "$(stat -c %s "build/$name.zip")"
}

# build_with_package SOURCE FOLDER: builds a project with the unpacked package, in the folder `work`.
build_with_package() {
  cmake -G Ninja -S "$1" -B "$work/$2" --toolchain "$PWD/cmake/toolchains/windows-x64.cmake" \
    -DCMAKE_PREFIX_PATH="$PWD/$work/$name" -DCMAKE_EXE_LINKER_FLAGS=-static >/dev/null &&
    cmake --build "$work/$2" >/dev/null || fail "$1 did not build with the package"
  cp "$work/$name/bin/zelvan.dll" "$work/$2"
}
