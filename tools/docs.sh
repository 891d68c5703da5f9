# ./dev docs, with the functions of dev at hand.
# shellcheck shell=bash

docs() {
  need doxygen furo python3 python3-breathe python3-myst-parser python3-sphinx \
    python3-sphinx-copybutton
  step "the guide and the reference"
  python3 -B tools/docs out/docs || fail "the site is not as it has to be; see above"
}
