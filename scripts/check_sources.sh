#!/usr/bin/env bash
# Checks that every source file is laid out by .clang-format, and that .clang-tidy finds nothing in
# the module and the small host; the drawing's widest instruction sets compile the same code as the
# others. Needs a configured release build for the compile commands.
set -euo pipefail
cd "$(dirname "$0")/.."
git ls-files '*.cpp' '*.h' | xargs clang-format --dry-run --Werror
run-clang-tidy -quiet -p build/release -j "$(nproc)" "$PWD/(src|hostkit)/(?!render/isa/avx).*\.cpp$" >build/clang-tidy.log 2>&1 || {
  grep -E 'error:|warning:' build/clang-tidy.log | sort -u >&2
  exit 1
}
