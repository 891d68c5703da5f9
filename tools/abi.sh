# ./dev abi. Sourced by dev, whose functions it uses.
# shellcheck shell=bash

# abi: compares the library's interface with the stored one of each release. A name, layout or type
# that changed is an error; an addition is not. abi --describe TAG: stores the interface of a
# release.
abi() {
  need_to_build abigail-tools git
  local known=tests/interface/abi work=$PWD/build/abi release
  mkdir -p "$work"
  if [[ ${1:-} == --describe ]]; then
    step "describing the interface of $2"
    rm -rf "$work/described"
    git archive --prefix=described/ "$2" | tar x -C "$work" || fail "there is no commit or tag $2"
    describe "$work/described" "$work/described" "$known/${2#v}.xml"
    return
  fi
  step "comparing the interface with those of releases"
  describe "$PWD" "$work" "$work/now.xml"
  for release in "$known"/*.xml; do
    abidiff --no-added-syms "$release" "$work/now.xml" ||
      fail "a program built with $(basename "$release" .xml) may not work with this library"
    printf 'Programs built with %s work with this library.\n' "$(basename "$release" .xml)"
  done
}

# describe SOURCE FOLDER FILE: builds the library of SOURCE in FOLDER/build, with debugging
# information, and writes a description of its public interface to FILE.
describe() {
  cmake -G Ninja -S "$1" -B "$2/build" -DCMAKE_BUILD_TYPE=Debug -DCMAKE_CXX_COMPILER=g++ \
    -DCMAKE_CXX_FLAGS_DEBUG="-O0 -g -ffile-prefix-map=$1=." >/dev/null &&
    cmake --build "$2/build" --target zelvan || fail "the library of $1 did not build"
  rm -rf "$2/include"
  cmake --install "$2/build" --component Development --prefix "$2" >/dev/null ||
    fail "the headers of $1 could not be installed"
  abidw --headers-dir "$2/include" --drop-private-types --exported-interfaces-only \
    --no-corpus-path --no-comp-dir-path --no-show-locs --type-id-style hash --out-file "$3" \
    "$2/build/src/zelvan/libzelvan.so" || fail "abidw could not describe the library of $1"
}
