# ./dev package. Sourced by dev, whose functions it uses.
# shellcheck shell=bash

# Makes the source archive and the Debian packages of the last commit in out/, and tests them.
package() {
  . tools/clean_root.sh
  need_clean_root git build-essential debhelper lintian
  need_to_build
  local version name work=$PWD/build/package
  version=$(sed -n 's/^project(zelvan VERSION \([0-9.]*\).*/\1/p' CMakeLists.txt)
  name=zelvan-$version
  git diff --quiet HEAD || printf '\nWarning: uncommitted changes are not in the packages.\n'
  rm -rf "$work"
  mkdir -p "$work/try" out

  step "the source archive and the packages"
  git archive --prefix="$name/" -o "$work/$name.tar.gz" HEAD ||
    fail "packages are made from a commit, and this folder is no clone"
  ln "$work/$name.tar.gz" "$work/zelvan_$version.orig.tar.gz"
  # Without a compiler cache, since cached objects can have the paths of another build in their
  # debugging symbols.
  tar xf "$work/$name.tar.gz" -C "$work"
  (cd "$work/$name" && quietly "$work/build.log" env -u CMAKE_CXX_COMPILER_LAUNCHER \
    -u CMAKE_C_COMPILER_LAUNCHER dpkg-buildpackage -us -uc) ||
    fail "dpkg-buildpackage failed; its full output is in $work/build.log"

  step "lintian"
  # Suppressed are two tags for uploads to Debian: that the changelog names no bug that asks for the
  # package, and that debian/ is the same as in the source archive.
  lintian --allow-root --fail-on error,warning \
    --suppress-tags initial-upload-closes-no-bugs,no-debian-changes \
    "$work"/zelvan_*.changes || fail "lintian reports errors or warnings: see above"

  cp "$work/$name.tar.gz" "$work"/*.deb "$work/try"
  ! try_in_clean_root "$work/try" || touch "$work/tried"
  printf '\nCreated:\n'
  cp -v "$work/$name.tar.gz" "$work"/*.deb out/
}

# try_in_clean_root FOLDER: builds the source archive in FOLDER in a clean root, requires that the
# packages are the same bytes as those in FOLDER, installs them and runs their tests. Returns 1 if
# no root can be created.
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
  echo "The packages are the same bytes, install with apt, and pass their tests."
}
