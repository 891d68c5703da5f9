# ./dev playground. Sourced by dev, whose functions it uses.
# shellcheck shell=bash

playground() {
  local page=out/playground
  need_to_build emscripten node-acorn python3
  step "building the page"
  build playground page
  rm -rf "$page"
  mkdir -p out
  cp -r build/playground/page "$page"
  [[ -e out/docs/index.html ]] || docs
  cp -r out/docs "$page/guide"
  archive_sources "$page/zelvan-source.tar.gz"
  if [[ ${1:-} == --check ]]; then
    check_playground "$page"
    return
  fi
  printf 'Open %s/index.html, or the address below. Press Ctrl-C to stop.\n' "$page"
  exec python3 -u -m http.server --bind 127.0.0.1 --directory "$page" "${ZELVAN_PORT:-0}"
}

# archive_sources FILE: packs the sources as they are now; in a clone only files that git tracks.
archive_sources() {
  if git rev-parse --git-dir >/dev/null 2>&1; then
    git ls-files -z
  else
    find . \( -path ./build -o -path ./out \) -prune -o ! -type d -print0
  fi | tar -czf "$1" --null --files-from=- --transform='s,^\(\./\)*,zelvan/,S'
}

# Checks the types of the page's scripts, and compares the page in a browser with a native program.
check_playground() {
  local source=examples/playground work=build/playground-check
  need_to_test chromium
  command -v npm >/dev/null || need npm  # some packages of node include it
  step "building the native program to compare with"
  build gcc playground_counts
  step "installing the packages that control the browser"
  mkdir -p "$work"
  cp "$source"/{package.json,package-lock.json,.npmrc,check*.mjs} "$work"
  npm ci --prefix "$work" --ignore-scripts --prefer-offline --no-audit --no-fund --loglevel=error ||
    fail "npm could not install the packages in $source/package-lock.json"
  step "the types of the page"
  "$work/node_modules/.bin/tsc" -p "$source" || fail "the page has type errors: see above"
  step "the page in a browser"
  timeout 600 node "$work/check.mjs" "$1" build/gcc/examples/playground/playground_counts \
    out/playground-pictures ||
    fail "the page has faults: see above; pictures of it are in out/playground-pictures"
}
