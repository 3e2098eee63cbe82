#!/usr/bin/env bash
# Does for so many minutes what hosts do: renders of any values and sizes, instances and threads that
# come and go, events in the controls, modules and filters loaded and unloaded. Prints resident memory,
# open files and threads at each tenth of the time, and fails when they grow after the half of it.
# BRISEL_TEST_SEED=NUMBER does the same again.
#
#   scripts/soak.sh MINUTES
set -euo pipefail
cd "$(dirname "$0")/.."
if [[ ! ${1-} =~ ^[0-9]+$ ]] || [ $# -ne 1 ]; then
  echo "usage: scripts/soak.sh MINUTES" >&2
  exit 2
fi
cmake --preset release >/dev/null
cmake --build --preset release -j "$(nproc)" --target soak
BRISEL_TEST_SEED=${BRISEL_TEST_SEED:-random} build/release/bin/soak $((60 * $1))
