#!/usr/bin/env bash
# Installs what is missing, builds, and runs every check: layout and lint of the sources, for which clang
# reads them with its warnings on; the tests of the rooms, of scenes and of the plug-ins under the
# sanitizers and with assertions, and all of these but scenes and the frei0r filter as Windows programs
# under Wine; all tests on the release build. Where the packages for Windows cannot be had, says so at
# the end. Ends with the release tests' summary; with "everything", with that of the heavy tests, which
# follow: every fuzzer for 20 seconds, the same bytes from every compiler, level of optimization,
# instruction set and system, the manual in a real browser, the frei0r filter in its hosts, the Debian
# packages, a farm on a real Slurm, the preview window, the effect as a part of another project. Says
# how long each took.
#
#   scripts/run_tests.sh [everything]
set -euo pipefail
cd "$(dirname "$0")/.."
heavy=
if [ "$*" = everything ]; then
  heavy=yes
elif [ $# -ne 0 ]; then
  echo "usage: scripts/run_tests.sh [everything]" >&2
  exit 2
fi
scripts/install_dependencies.sh

build() {
  cmake --preset "$1" >/dev/null
  cmake --build --preset "$1" -j "$(nproc)" "${@:2}"
}

begun=$SECONDS
# took STAGE: which ended now
took() {
  times+=("$(printf '%4d s  %s' $((SECONDS - begun)) "$1")")
  begun=$SECONDS
}

times=()
scripts/check_sources.sh
took "layout and lint"
build asan --target unit_tests contour_tests fault_tests plugin_tests scene_tests frei0r_tests openfx_tests
ctest --preset asan -R '^(unit|contour|faults|plugin|scene|frei0r|openfx)\.' -E '^(frei0r\.in_|faults\.command)'
took "sanitizers"
not_run=
# Each compiler, level and system at least once; all of them together would take too long.
builds='^linux-x86_64-(gcc-O[03]|clang-O2)|^windows-x86_64-(gcc-O3|clang-O0)|^linux-arm64-(gcc-O2|clang-O0)'
if scripts/install_dependencies.sh windows; then
  build windows
  ctest --preset windows
else
  not_run="NOT RUN: the Windows build and its tests, for want of packages (see above)."
  builds='^linux-x86_64-(gcc-O[03]|clang-O2)|^linux-arm64-(gcc-O2|clang-O0)'
fi
took "Windows"
build release
ctest --preset release
took "release"
if [ -n "$heavy" ]; then
  scripts/fuzz.sh check
  took "fuzzers"
  scripts/install_dependencies.sh clang
  scripts/install_dependencies.sh arm64
  scripts/reproduce.sh "$builds"
  took "the same bytes"
  scripts/install_dependencies.sh browser
  scripts/install_dependencies.sh hosts
  scripts/install_dependencies.sh packages
  scripts/install_dependencies.sh farm
  scripts/install_dependencies.sh desk
  build release
  ctest --preset release -R '^desk\.'
  ctest --preset heavy
  took "heavy tests"
fi
printf '%s\n' "${times[@]}"
[ -z "$not_run" ] || echo "$not_run"
