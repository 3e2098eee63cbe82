#!/usr/bin/env bash
# Which lines and branches the tests reach, by folder: builds with clang's counters, runs the tests of
# the release build, prints a table. With folders, also lists the lines in them that no test reaches.
# Kernels of the wide instruction sets are left out, as they compile the same code as the others.
#
#   scripts/coverage.sh [FOLDER ...]
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/install_dependencies.sh
scripts/install_dependencies.sh clang
build=build/coverage
cmake --preset coverage >/dev/null
cmake --build --preset coverage -j "$(nproc)"
rm -rf $build/profiles
LLVM_PROFILE_FILE="$PWD/$build/profiles/%4m.profraw" ctest --preset coverage --quiet ||
  echo "Some tests failed: what they would have reached is missing." >&2
llvm-profdata merge -sparse -o $build/all.profdata $build/profiles/*.profraw
counted=()
for program in $build/bin/* $build/lib/frei0r-1/* $build/lib/OFX/*/*/*/*.ofx; do
  [ ! -f "$program" ] || counted+=(-object "$program")
done
llvm-cov export -format=lcov -instr-profile $build/all.profdata "${counted[@]:1}" >$build/coverage.lcov
scripts/coverage_table.py $build/coverage.lcov "$@"
