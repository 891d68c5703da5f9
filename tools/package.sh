# ./dev package, with the functions of dev at hand.
# shellcheck shell=bash

# Makes the source archive and the Debian packages of the last commit, in out/, and tries them.
package() {
  . tools/clean_root.sh
  need_clean_root git build-essential debhelper lintian
  need_to_build
  local version name work=$PWD/build/package made
  version=$(sed -n 's/^project(zelvan VERSION \([0-9.]*\).*/\1/p' CMakeLists.txt)
  name=zelvan-$version
  [[ $(dpkg-parsechangelog -S Version) == "$version"-* ]] ||
    fail "debian/changelog is about another version than $version"
  git diff --quiet HEAD || printf '\nNot in the packages: what is not committed.\n'
  rm -rf "$work"
  mkdir -p "$work/try" out

  step "the source archive and the packages"
  git archive --prefix="$name/" -o "$work/$name.tar.gz" HEAD ||
    fail "packages are made of a commit; this is no clone"
  ln "$work/$name.tar.gz" "$work/zelvan_$version.orig.tar.gz"
  # Without a compiler's cache, which can keep the paths of another build in the debugging symbols.
  (cd "$work" && tar xf "$name.tar.gz" && cd "$name" &&
    env -u CMAKE_CXX_COMPILER_LAUNCHER -u CMAKE_C_COMPILER_LAUNCHER dpkg-buildpackage -us -uc) \
    >"$work/build.log" 2>&1 || {
    tail -n 40 "$work/build.log" >&2
    fail "dpkg-buildpackage fails; the whole of it is in $work/build.log"
  }

  step "lintian"
  # Suppressed are the wishes for the number under which Debian was asked to take the packages in, and
  # for a debian/ folder that differs from that of the source archive.
  lintian --allow-root --fail-on error,warning \
    --suppress-tags initial-upload-closes-no-bugs,no-debian-changes \
    "$work"/zelvan_*.changes || fail "lintian refuses the packages"

  cp "$work/$name.tar.gz" "$work"/*.deb "$work/try"
  ! try_in_clean_root "$work/try" || touch "$work/tried"
  made=("$work/$name.tar.gz" "$work"/*.deb)
  cp "${made[@]}" out/
  printf '\nMade, with their sizes in bytes:\n'
  stat -c '%8s  %n' "${made[@]/#$work/out}"
}

# try_in_clean_root FOLDER: in a clean root, the source archive in FOLDER must make the packages in
# FOLDER again, byte for byte, and these must pass their tests. Returns 1 if there can be no such root.
try_in_clean_root() {
  step "a clean root: build the same bytes again, install, and run the packages' tests"
  cat >"$1/run" <<'END'
export DEBIAN_FRONTEND=noninteractive
cd /try
mkdir -p again/further/down
tar xf zelvan-*.tar.gz -C again/further/down
source=$(echo again/further/down/zelvan-*)
apt-get build-dep -qq --no-install-recommends "./$source" >/dev/null
(cd "$source" && umask 077 && TZ=Pacific/Chatham dpkg-buildpackage -us -uc -b >/try/build.log 2>&1) || {
  tail -n 40 build.log
  exit 1
}
for package in *.deb; do cmp "$package" "again/further/down/$package"; done
apt-get install -qq --no-install-recommends autopkgtest >/dev/null
autopkgtest --no-built-binaries ./*.deb "$source/" -- null
END
  in_clean_root "$1" || return 1
  echo "The same bytes again; they install with apt, and their tests pass."
}
