# ./dev release and ./dev verify. Sourced by dev, whose functions they use.
# shellcheck shell=bash

# release KEY: makes the release of the last commit in out/release, signed by the maintainer's KEY.
release() {
  . tools/package.sh
  need gnupg reuse
  local key=$1 folder=$PWD/out/release work=$PWD/build/package
  gpg --batch --list-secret-keys "$key" >/dev/null 2>&1 || fail "gpg has no secret key '$key'"
  git diff --quiet HEAD || fail "a release is made from a commit; commit or undo your changes first"
  package
  [[ -e $work/tried ]] || fail "a release must pass its tests in a clean root"

  step "the list of files and licences, the checksums, the signature"
  rm -rf "$folder" "$work/listed"
  mkdir -p "$folder" "$work/listed"
  cp "$work"/zelvan-*.tar.gz "$work"/*.deb "$folder"
  tar xf "$work"/zelvan-*.tar.gz -C "$work/listed"
  reuse --root "$work"/listed/zelvan-* spdx |
    sed '/^Creator: Person/d; s/^\(Creator: Organization: \).*/\1The zelvan authors/' \
      >"$(echo "$folder"/zelvan-*.tar.gz).spdx" || fail "reuse could not list the licences"
  (cd "$folder" && sha256sum -- * >"$work/SHA256SUMS" && mv "$work/SHA256SUMS" .)
  gpg --batch --local-user "$key" --armor --detach-sign "$folder/SHA256SUMS" ||
    fail "gpg could not sign with '$key'"
  printf '\nCreated in out/release:\n'
  ls "$folder"
}

# verify FOLDER KEYFILE: verifies a release as a user does who has the maintainer's public key in
# KEYFILE.
verify() {
  . tools/package.sh
  . tools/clean_root.sh
  need_clean_root sqv
  local folder key_file=$2 work=$PWD/build/verify
  folder=$(cd "$1" && pwd) || fail "there is no folder $1"
  rm -rf "$work"
  mkdir -p "$work/try"
  step "the signature"
  sqv --keyring "$key_file" "$folder/SHA256SUMS.asc" "$folder/SHA256SUMS" ||
    fail "$1/SHA256SUMS is not signed by the key in $key_file"
  step "the checksums"
  (cd "$folder" && sha256sum --check --strict SHA256SUMS &&
    diff <(sed 's/^[^ ]*  //' SHA256SUMS | sort) \
      <(find . -type f ! -name 'SHA256SUMS*' -printf '%P\n' | sort)) ||
    fail "the files in $1 are not those that were signed"
  cp "$folder"/zelvan-*.tar.gz "$folder"/*.deb "$work/try"
  try_in_clean_root "$work/try" || fail "without a clean root, the packages can't be compared with their sources"
  printf 'Verified: %s\n' "$1"
}
