# ./dev docs, with the functions of dev at hand.
# shellcheck shell=bash

docs() {
  need doxygen python3
  step "the guide and the reference"
  python3 -B tools/docs out/docs || fail "the site is not as it has to be; see above"
}
