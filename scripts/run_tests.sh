#!/usr/bin/env bash
# Installs what is missing, builds, and runs every check: all tests on the release build; the unit
# and host tests again without optimisation and under the sanitizers, which must give the same
# bytes; the layout and lint checks of the sources. Ends with the release tests' summary.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/install_dependencies.sh

build() {
  cmake --preset "$1" >/dev/null
  cmake --build --preset "$1" -j "$(nproc)" "${@:2}"
}

cmake --preset release >/dev/null
scripts/check_sources.sh
for preset in debug asan; do
  build "$preset" --target unit_tests host_tests
  ctest --preset "$preset" -R '^(unit|host)\.'
done
build release
ctest --preset release
