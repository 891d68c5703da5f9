# What ./dev package and ./dev ways share, with the functions of dev at hand.
# shellcheck shell=bash

need_clean_root() { need mmdebstrap uidmap "$@"; }

# in_clean_root FOLDER: copies FOLDER, named try, into a new Debian of what is essential, and apt, and
# runs its script /try/run there. The root lives as long as that takes. What the script writes into
# /try/said is put beside FOLDER. Fails if the script does, and returns 1 if no root can be made here.
in_clean_root() {
  local folder=$1 work=${1%/*} release room
  mkdir -p "$folder/said"
  # The sources are those that apt has here; the root stands in memory where that has room.
  release=$(. /etc/os-release && echo "${VERSION_CODENAME:-stable}")
  apt-get indextargets --format 'deb $(REPO_URI) $(RELEASE) $(COMPONENT)' \
    'Identifier: Packages' 'Origin: Debian' | sort -u >"$work/sources.list"
  room=$(df --output=avail /dev/shm 2>/dev/null | tail -n 1) || room=0
  ((room < 2000000)) || local -x TMPDIR=/dev/shm
  mmdebstrap --variant=apt --format=null --dpkgopt=force-unsafe-io \
    --customize-hook="copy-in '$folder' /" \
    --customize-hook='chroot "$1" sh -c "echo the root stands; exec env -u CMAKE_CXX_COMPILER_LAUNCHER -u CMAKE_C_COMPILER_LAUNCHER sh -e /try/run"' \
    --customize-hook="copy-out /try/said '$work'" \
    "$release" /dev/null "$work/sources.list" >"$work/root.log" 2>&1 && return
  cat "$work/root.log" >&2
  ! grep -q '^the root stands' "$work/root.log" || fail "that failed in a clean root; see above"
  printf '\nNOT CHECKED in a clean root, since none can be made here; mmdebstrap says why above.\n'
  return 1
}
