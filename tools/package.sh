# ./dev package, with the functions of dev at hand.
# shellcheck shell=bash

# Makes the source archive and the Debian packages of the last commit, in out/. All is made twice,
# in two folders, and must come out with the same bytes.
package() {
  . tools/clean_root.sh
  need_clean_root
  need_to_build git python3 libgtest-dev file binutils dpkg-dev lintian
  local version name work=$PWD/build/package made=() file
  version=$(sed -n 's/^project(zelvan VERSION \([0-9.]*\).*/\1/p' CMakeLists.txt)
  name=zelvan-$version
  SOURCE_DATE_EPOCH=$(git log -1 --format=%ct) ||
    fail "packages are made of a commit; this is no clone"
  export SOURCE_DATE_EPOCH
  git diff --quiet HEAD || printf '\nNot in the packages: what is not committed.\n'
  rm -rf "$work"
  mkdir -p "$work"/{first,second/further/down} out

  step "the source archive, from here and from a clone"
  git clone --quiet --no-hardlinks . "$work/clone"
  git archive --prefix="$name/" -o "$work/first/$name.tar.gz" HEAD
  git -C "$work/clone" archive --prefix="$name/" -o "$work/second/further/down/$name.tar.gz" HEAD
  rm -rf "$work/clone"
  export GIT_DIR=/nonexistent  # from here on nothing may ask git

  step "the packages"
  build_packages "$work/first" "$name"
  step "the same in another folder, with other permissions and another time zone"
  (umask 077 && TZ=Pacific/Chatham CCACHE_DISABLE=1 \
    build_packages "$work/second/further/down" "$name")
  for file in "$work"/first/*.{tar.gz,deb}; do
    made+=("${file##*/}")
    same_bytes "$file" "$work/second/further/down/${file##*/}"
  done
  printf 'The same bytes from both folders: %s\n' "${made[*]}"

  step "the source archive, as a stranger takes it"
  python3 tests/guide/guide_example.py extract README.md "$work/app.cpp"
  (cd "$work/second/further/down/$name" &&
    cmake --preset gcc -DZELVAN_BUILD_EXAMPLES=OFF >/dev/null &&
    cmake --install build/package --prefix "$work/installed" >/dev/null) ||
    fail "the source archive's tests can't be configured, or it can't be installed"
  try_program "$work/installed"

  step "lintian"
  # Suppressed is the wish for the number under which Debian was asked to take the packages in. What
  # it says of hardening would be mere information.
  (
    cd "$work/first"
    lintian --allow-root --fail-on error,warning \
      --suppress-tags initial-upload-closes-no-bugs ./*.deb &&
      lintian --allow-root --display-info --fail-on error,warning,info \
        --tags hardening-no-relro,hardening-no-bindnow,hardening-no-fortify-functions ./*.deb
  ) || fail "lintian refuses the packages"
  step "a clean root: install, build the README's program, run it"
  try_packages

  cp "${made[@]/#/$work/first/}" out/
  printf '\nMade, with their sizes in bytes:\n'
  (cd out && stat -c '%8s  out/%n' "${made[@]}")
}

# build_packages FOLDER NAME: unpacks NAME.tar.gz in FOLDER, and leaves its packages there.
build_packages() (
  cd "$1"
  tar xf "$2.tar.gz"
  cd "$2"
  # Hardened as Debian has it, with the optimisation of all our builds.
  export DEB_BUILD_MAINT_OPTIONS=hardening=+all DEB_CXXFLAGS_MAINT_STRIP='-g -O2'
  CXXFLAGS="$(dpkg-buildflags --get CXXFLAGS) $(dpkg-buildflags --get CPPFLAGS)"
  LDFLAGS=$(dpkg-buildflags --get LDFLAGS)
  export CXXFLAGS LDFLAGS
  build package
  cd build/package
  # These two read the built library, and control, shlibs and exports.symbols in debian/.
  local library=src/zelvan/libzelvan.so name needed
  name=$(sed -n 's/^Package: //p' debian/control)
  # A name that is listed and missing is a fault only in a later version than it is listed with.
  dpkg-gensymbols -c4 -p"$name" -v"${2#zelvan-}-1" -Idebian/exports.symbols -Odebian/symbols \
    -e$library ||
    fail "the names that leave the library are not those of exports.txt"
  needed=$(dpkg-shlibdeps -O $library 2>shlibdeps.log) || fail "$(cat shlibdeps.log)"
  umask 022  # which decides on the permissions of folders in the packages
  cpack -B cpack -D CPACK_DEBIAN_RUNTIME_PACKAGE_DEPENDS="${needed#shlibs:Depends=}" >cpack.log ||
    fail "$(cat cpack.log)"
  mv cpack/*.deb "$1"
)

# same_bytes FILE FILE
same_bytes() {
  cmp -s "$1" "$2" && return
  diff <(contents_of "$1") <(contents_of "$2") >&2 || true
  fail "${1##*/} depends on the folder that it is made in; see above"
}

# contents_of ARCHIVE: a line for each file in it, with a digest.
contents_of() (
  folder=$(mktemp -d)
  trap 'rm -rf "$folder"' EXIT
  case $1 in
    *.deb) dpkg-deb -R "$1" "$folder" && dpkg-deb -c "$1" ;;
    *) tar xf "$1" -C "$folder" && tar tvf "$1" ;;
  esac
  cd "$folder" && find . -type f -exec sha256sum {} + | sort -k 2
)

# try_program PREFIX: the README's program, work/app.cpp, with the library that is installed there.
try_program() {
  local pc
  pc=$(find "$1" -name zelvan.pc)
  export PKG_CONFIG_PATH=${pc%/*} LD_LIBRARY_PATH=${pc%/pkgconfig/*}
  # shellcheck disable=SC2046  # the flags are words
  c++ "$work/app.cpp" -o "$work/app" $(pkg-config --cflags --libs zelvan) &&
    python3 tests/guide/guide_example.py run README.md "$work/app" ||
    fail "the README's program does not build or run with what is below $1"
  unset PKG_CONFIG_PATH LD_LIBRARY_PATH
}

# try_packages: in a clean root. Where none can be made there is a lesser check, which is said to be
# one.
try_packages() {
  local file
  mkdir "$work/try"
  cp "$work"/first/*.deb "$work/app.cpp" "$work/try"
  cat >"$work/try/run" <<'END'
cd /try
export DEBIAN_FRONTEND=noninteractive
apt-get install -qq --no-install-recommends ./*.deb >/dev/null
ldconfig -p | grep -q '^.libzelvan.so.1 ' || { echo "ldconfig does not know the library"; exit 1; }
apt-get install -qq --no-install-recommends g++ pkg-config >/dev/null
c++ app.cpp $(pkg-config --cflags --libs zelvan) -o app
./app >said/packages
END
  if in_clean_root "$work/try"; then
    python3 tests/guide/guide_example.py run README.md cat "$work/said/packages" ||
      fail "in a clean root the README's program prints something else"
    echo "They install with apt in a clean root, and the README's program runs there."
    return
  fi
  echo 'Instead they are unpacked in a folder, where dependencies and ldconfig have no part.'
  for file in "$work"/first/*.deb; do dpkg -x "$file" "$work/unpacked"; done
  try_program "$work/unpacked/usr"
}
