# ./dev docs. Sourced by dev, whose functions it uses.
# shellcheck shell=bash

docs() {
  need doxygen furo python3 python3-breathe python3-myst-parser python3-sphinx \
    python3-sphinx-copybutton
  step "building the site of guide and reference"
  python3 -B tools/docs out/docs || fail "the site has faults: see above"
}
