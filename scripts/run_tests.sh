#!/usr/bin/env bash
# Installs what is missing, builds, and runs every check: all tests on the release build; those of
# the rooms, of scenes and of the plug-ins again without optimisation and under the sanitizers, and all
# of these but scenes and the frei0r filter as Windows programs under Wine, which must all give the same
# bytes; the layout and lint checks of the sources. Where the packages for Windows cannot be had, says
# so at the end. Ends with the release tests' summary; with "everything", with that of the heavy tests,
# which follow: the build by clang, whose bytes must be the same as well, the manual in a real browser,
# the frei0r filter in its hosts, the Debian packages, a farm on a real Slurm, the effect as a part of
# another project.
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

scripts/check_sources.sh
of_rooms=(-R '^(unit|contour|faults|plugin|scene|frei0r)\.' -E '^(frei0r\.in_|faults\.command)')
for preset in debug asan; do
  build "$preset" --target unit_tests contour_tests fault_tests plugin_tests scene_tests frei0r_tests
  ctest --preset "$preset" "${of_rooms[@]}"
done
not_run=
if scripts/install_dependencies.sh windows; then
  build windows
  ctest --preset windows
else
  not_run="NOT RUN: the Windows build and its tests, for want of packages (see above)."
fi
build release
ctest --preset release
if [ -n "$heavy" ]; then
  scripts/install_dependencies.sh clang
  build clang
  ctest --preset clang "${of_rooms[@]}"
  scripts/install_dependencies.sh browser
  scripts/install_dependencies.sh hosts
  scripts/install_dependencies.sh packages
  scripts/install_dependencies.sh farm
  ctest --preset heavy
fi
[ -z "$not_run" ] || echo "$not_run"
