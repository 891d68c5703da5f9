# Shared by ./dev package, verify and ways. Sourced; uses the functions of dev.
# shellcheck shell=bash

need_clean_root() { need mmdebstrap uidmap "$@"; }

# in_clean_root FOLDER: creates a temporary Debian root with only the essential packages and apt,
# copies FOLDER into it, and runs the script /try/run there. The last part of FOLDER must be "try".
# The script writes its results to /try/said, which is copied to said beside FOLDER. Fails if the
# script fails; returns 1 if no root can be created on this machine.
in_clean_root() {
  local folder=$1 work=${1%/*} release room
  mkdir -p "$folder/said"
  # Uses the package sources of this machine's apt, and creates the root in memory if there is room.
  release=$(. /etc/os-release && echo "${VERSION_CODENAME:-stable}")
  apt-get indextargets --format 'deb $(REPO_URI) $(RELEASE) $(COMPONENT)' \
    'Identifier: Packages' 'Origin: Debian' | sort -u >"$work/sources.list"
  room=$(df --output=avail /dev/shm 2>/dev/null | tail -n 1) || room=0
  ((room < 2000000)) || local -x TMPDIR=/dev/shm
  quietly "$work/root.log" mmdebstrap --variant=apt --format=null --dpkgopt=force-unsafe-io \
    --customize-hook="copy-in '$folder' /" \
    --customize-hook='chroot "$1" sh -c "echo the root stands; exec env -u CMAKE_CXX_COMPILER_LAUNCHER -u CMAKE_C_COMPILER_LAUNCHER sh -e /try/run"' \
    --customize-hook="copy-out /try/said '$work'" \
    "$release" /dev/null "$work/sources.list" && return
  ! grep -q '^the root stands' "$work/root.log" || fail "the script failed in a clean root: see above"
  printf '\nNOT CHECKED in a clean root: none can be created on this machine; see the message of mmdebstrap above.\n'
  return 1
}
