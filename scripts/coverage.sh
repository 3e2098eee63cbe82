#!/usr/bin/env bash
# Which lines and branches run, counted by clang. Kernels of the wide instruction sets are left out, as
# they compile the same code as the others.
#
#   scripts/coverage.sh [FOLDER ...]   # in the tests of rooms, scenes and plug-ins: a table by folder,
#                                      # and the lines in these folders that no test reaches
#   scripts/coverage.sh fuzz           # in each fuzzer's corpus, of the files that it enters
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/install_dependencies.sh
scripts/install_dependencies.sh clang
build=build/coverage
cmake --preset coverage >/dev/null
mkdir -p $build/profiles

# count NAME PROGRAM...: how often each line ran, by what profiles/NAME/ holds
count() {
  local name=$1 objects=()
  llvm-profdata merge -sparse -o "$build/$name.profdata" "$build/profiles/$name"/*.profraw
  for program in "${@:2}"; do objects+=(-object "$program"); done
  llvm-cov export -format=lcov -instr-profile "$build/$name.profdata" "${objects[@]:1}" >"$build/$name.lcov"
}

if [ "${1-}" = fuzz ]; then
  cmake --build --preset coverage -j "$(nproc)" --target fuzz_targets
  for program in $build/bin/fuzz_*; do
    name=${program##*/fuzz_}
    rm -rf "$build/profiles/$name"
    LLVM_PROFILE_FILE="$build/profiles/$name/%p.profraw" "$program" fuzz/{corpus,regressions}/"$name" >/dev/null
    count "$name" "$program"
  done
  scripts/coverage_table.py --entered $build/*.lcov
  exit
fi
cmake --build --preset coverage -j "$(nproc)" --target \
  unit_tests contour_tests fault_tests plugin_tests scene_tests frei0r_tests openfx_tests
rm -rf $build/profiles/tests
LLVM_PROFILE_FILE="$PWD/$build/profiles/tests/%4m.profraw" \
  ctest --preset coverage -R '^(unit|contour|faults|plugin|scene|frei0r|openfx)\.' -E '^(frei0r\.in_|faults\.command)' --quiet ||
  echo "Some tests failed: what they would have reached is missing." >&2
programs=()
for program in $build/bin/*_tests $build/lib/frei0r-1/* $build/lib/OFX/*/*/*/*.ofx; do
  [ ! -f "$program" ] || programs+=("$program")
done
count tests "${programs[@]}"
scripts/coverage_table.py $build/tests.lcov "$@"
