#!/usr/bin/env bash
# Checks that every source file is laid out by .clang-format, and that .clang-tidy finds nothing.
# Most of clang-tidy's time goes into the headers of others, so it reads the files of a target, in
# cli/ those of a folder, as one: their names at file level must differ. The drawing's widest
# instruction sets are left out, as they compile the same code as the others.
set -euo pipefail
cd "$(dirname "$0")/.."
git ls-files '*.cpp' '*.h' | xargs clang-format --dry-run --Werror
cmake --preset lint >/dev/null
cmake --build build/lint --target commit >/dev/null  # a header
run-clang-tidy -quiet -p build/lint -j "$(nproc)" -checks=-bugprone-suspicious-include '\.c(pp|xx)$' \
  >build/lint/clang-tidy.log 2>&1 || {
  grep -E 'error:|warning:' build/lint/clang-tidy.log | sort -u >&2
  exit 1
}
