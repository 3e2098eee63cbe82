#!/usr/bin/env bash
# Checks that every source file is laid out by .clang-format, and that .clang-tidy finds nothing.
# Most of clang-tidy's time goes into the headers of others, so it reads the files of a target, in
# cli/ those of a folder, as one: their names at file level must differ. The drawing's widest
# instruction sets are left out, as they compile the same code as the others.
set -euo pipefail
cd "$(dirname "$0")/.."
git ls-files '*.cpp' '*.h' | xargs clang-format --dry-run --Werror

build=build/UnifiedSource  # the analyzer follows includes of sources only from files so named
cmake --preset lint >/dev/null
cmake --build $build --target commit >/dev/null  # makes a header
# Qt's headers, without what the window links, for which the target of that name would wait.
for info in $build/desk/CMakeFiles/*_autogen.dir/AutogenInfo.json; do
  [ ! -e "$info" ] || cmake -E cmake_autogen "$info" Release >/dev/null
done

# lint FILES CHECKS
lint() {
  run-clang-tidy -quiet -p $build -j "$(nproc)" -checks="-bugprone-suspicious-include$2" "$1" \
    >$build/clang-tidy.log 2>&1 || {
    grep -E 'error:|warning:' $build/clang-tidy.log | sort -u >&2
    return 1
  }
}

# Walking every path through macros of tests and descriptions of options takes longest, for nothing.
walked="^$PWD/($build/)?(src|scene|hostkit|cli)/(?!.*(commands|reference|main\.cpp)).*\.c(pp|xx)$"
lint "$walked" ""
lint "^(?!$walked)(?!.*_autogen).*\.c(pp|xx)$" ",-clang-analyzer-*"
