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
  if [[ ! -e out/docs/index.html ]]; then
    . tools/docs.sh
    docs
  fi
  cp -r out/docs "$page/guide"
  archive_sources "$page/zelvan-source.tar.gz"
  case ${1:-} in
    --check) check_playground "$page" ;;
    '')
      printf 'Open %s/index.html, or the address below. Press Ctrl-C to stop.\n' "$page"
      exec python3 -u -m http.server --bind 127.0.0.1 --directory "$page" "${ZELVAN_PORT:-0}"
      ;;
  esac
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
  mkdir -p "$work"
  if ! cmp -s "$source/package-lock.json" "$work/package-lock.json"; then
    step "installing the packages that control the browser"
    cp "$source"/{package.json,package-lock.json,.npmrc} "$work"
    (cd "$work" && npm ci --ignore-scripts --no-audit --no-fund --loglevel=error >/dev/null) || {
      rm -f "$work/package-lock.json"
      fail "npm could not install the packages in $source/package-lock.json"
    }
  fi
  step "the types of the page"
  "$work/node_modules/.bin/tsc" -p "$source" || fail "the page has type errors: see above"
  step "the page in a browser"
  cp "$source"/check*.mjs "$work"  # to the folder of the packages that they import
  timeout 600 node "$work/check.mjs" "$1" build/gcc/examples/playground/playground_counts \
    out/playground-pictures ||
    fail "the page has faults: see above; pictures of it are in out/playground-pictures"
}
