# ./dev coverage: measures which lines, branches and conditions the contract tests reach. Sourced
# by dev.

coverage() {
  # The last three packages are for osh/file_systems, which is skipped where it can't mount.
  need_to_test clang-19 llvm-19 libclang-rt-19-dev e2fsprogs exfatprogs exfat-fuse
  step "building with counters"
  build coverage
  local folder=build/coverage/counts page=out/coverage program
  rm -rf "$folder" "$page"
  mkdir -p "$folder" "$page"
  step "the contract tests and the fault injection, without the digests"
  LLVM_PROFILE_FILE=$PWD/$folder/%8m.profraw \
    ctest --preset coverage -LE 'exhaustive|slow' -E '^(digests|fuzz|guide|install|interface/[^F])' ||
    fail "tests failed; counts of failed tests are meaningless"
  llvm-profdata-19 merge --sparse "$folder"/*.profraw -o "$folder/all.profdata"
  # Counts of the test programs are included, since they run code of the library, too: the inline
  # functions of its headers, and in tests of private code the library's objects, linked in.
  local objects=()
  for program in build/coverage/tests/*/*_test; do objects+=(-object "$program"); done
  local what=(build/coverage/src/zelvan/libzelvan.so "${objects[@]}"
    -instr-profile="$folder/all.profdata" -ignore-filename-regex="^($PWD/tests|/usr)/")
  llvm-cov-19 show "${what[@]}" -format=html -output-dir="$page" -show-branches=count \
    -show-mcdc -show-mcdc-summary -show-region-summary=false -show-instantiation-summary=false
  llvm-cov-19 report "${what[@]}" -show-mcdc-summary -show-region-summary=false \
    >"$page/summary.txt"
  sed -n '1,2p; /^TOTAL/p' "$page/summary.txt"
  printf 'Summary by file: %s\nAnnotated sources: %s\n' "$page/summary.txt" "$page/index.html"
}
