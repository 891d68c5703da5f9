# ./dev ways. Sourced by dev, whose functions it uses.
# shellcheck shell=bash

# Runs the README's commands to draw the demo, to install and to link, word for word, with the last
# commit in a clean Debian root. Each way to install must end with the output of the README's program
# and an optimised library, and the demo with its pictures.
ways() {
  . tools/clean_root.sh
  need_clean_root git libxml2-utils pngcheck python3
  local work=$PWD/build/ways way demo by_hand install compile find add link type
  demo=$(from_readme '^    (\./dev demo) ')
  by_hand=$(from_readme '^  (cmake -B build .*)$')
  install=$(from_readme '`(\./dev install /usr/local)`')
  compile=$(from_readme '`` (c\+\+ app\.cpp .*) ``')
  find=$(from_readme '`(find_package\(.*REQUIRED\))`')
  add=$(from_readme '`(add_subdirectory\(zelvan\))`')
  link=$(from_readme '`(target_link_libraries\(app [^`]*)`')
  type=$(from_readme '`(-DCMAKE_BUILD_TYPE=Release)`')
  rm -rf "$work"
  mkdir -p "$work/try"
  git diff --quiet HEAD || printf '\nWarning: uncommitted changes are not tested.\n'
  git archive --prefix=zelvan/ -o "$work/try/zelvan.tar" HEAD
  python3 tests/guide/guide_example.py extract README.md "$work/try/app.cpp"
  {
    cat <<'END'
cd /try
export DEBIAN_FRONTEND=noninteractive CMAKE_BUILD_PARALLEL_LEVEL=$(nproc)
apt-get install -qq --no-install-recommends g++ cmake make pkg-config >/dev/null
tar xf zelvan.tar

# optimised FOLDER: fails unless a library built in FOLDER is optimised.
optimised() {
  grep -rqE --include=flags.make --include=build.ninja '^ *(CXX_)?FLAGS = .*-O3' "$1" && return
  echo "the library in $1 is not optimised"
  exit 1
}
forget() {
  rm -rf /usr/local/include/zelvan /usr/local/lib/*zelvan* /usr/local/lib/*/*zelvan*
  ldconfig
}
project() {
  mkdir "/try/$1"
  cd "/try/$1"
  cp ../app.cpp .
  printf '%s\n' 'cmake_minimum_required(VERSION 3.25)' 'project(app CXX)' "$2" \
    'add_executable(app app.cpp)' "$3" >CMakeLists.txt
}
END
    cat <<END
echo "== by hand"
cd /try/zelvan
$by_hand
optimised build
cd /try
$compile -o app
./app >said/by_hand
forget
echo "== ./dev install"
cd /try/zelvan
$install
optimised build/install
cd /try
$compile -o app
./app >said/install
echo "== find_package"
project find_package '$find' '$link'
cmake -B build
cmake --build build
build/app >../said/find_package
forget
echo "== add_subdirectory"
project add_subdirectory '$add' '$link'
tar xf ../zelvan.tar
cmake -B build $type
cmake --build build
optimised build/zelvan
build/app >../said/add_subdirectory
echo "== the demo"
cd /try/zelvan
$demo
cp -r out ../said/demo
END
  } >"$work/try/run"
  step "the README's commands, in a clean root"
  in_clean_root "$work/try" || return 0
  for way in by_hand install find_package add_subdirectory; do
    python3 tests/guide/guide_example.py run README.md cat "$work/said/$way" ||
      fail "the README's program prints something else if built by '$way'"
    echo "$way: the program's output is right, and the library is optimised"
  done
  check_demo "$work/said/demo"
}

# check_demo FOLDER: checks what ./dev demo has drawn into FOLDER. The pages of the gallery must be
# as large as the pictures of the guide with their names.
check_demo() {
  local folder=$1 maps=({closeup,dashed,foreign,named,pens,world}.png) pages countries
  pages=("$folder"/gallery/*.png)
  ((${#pages[@]} >= 10)) || fail "the gallery has ${#pages[@]} pages; at least 10 are meant"
  diff <(printf '%s 1600x800\n' "${maps[@]}" && whole_pictures "${pages[@]/*\//docs/images/}") \
    <(whole_pictures "${maps[@]/#/$folder/}" "${pages[@]}") ||
    fail "pictures of the demo are missing, damaged, empty, or of another size (< as meant, > as drawn)"
  countries=$(xmllint --xpath 'count(//*[local-name() = "path"])' "$folder/world.svg") ||
    fail "world.svg is damaged"
  ((countries >= 177)) || fail "world.svg shows only $countries countries"
  echo "demo: $((${#maps[@]} + ${#pages[@]})) pictures of the right size, and world.svg"
}

# whole_pictures FILE...: prints names and sizes of those pictures that are neither damaged nor
# empty. A map without a country has less than 6000 bytes.
whole_pictures() {
  find "$@" -size +9999c -exec pngcheck '{}' + | sed -nE 's|^OK: .*/(\S+) \((\w+),.*|\1 \2|p'
}

# from_readme PATTERN: prints the text that the group of PATTERN matches in the README. Exactly one
# line must match.
from_readme() {
  local found
  found=$(perl -ne "print \"\$1\\n\" if m{$1}" README.md)
  [[ $found && $found != *$'\n'* ]] || fail "README.md must have exactly one line that matches $1"
  printf '%s\n' "$found"
}
