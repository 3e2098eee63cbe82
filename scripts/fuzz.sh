#!/usr/bin/env bash
# Builds the fuzzers of fuzz/, runs each for so many minutes, as many beside each other as there are
# processors, and prints one table. What reaches more code than before goes into fuzz/corpus/, as few
# files as do the same. With "check" each runs for 20 seconds, always from the same seed, and no file of
# the sources changes. Exits with 1 when an input broke something, and says how to run it again.
#
#   scripts/fuzz.sh MINUTES|check [TARGET...]
set -euo pipefail
cd "$(dirname "$0")/.."

mapfile -t all < <(sed -n 's/^fuzz_target(\([a-z0-9_]*\).*/\1/p' fuzz/CMakeLists.txt)
if [[ ! ${1-} =~ ^(check|[0-9]+)$ ]]; then
  echo "usage: scripts/fuzz.sh MINUTES|check [TARGET...]" >&2
  exit 2
fi
export seconds=20 seed=1
[ "$1" = check ] || seconds=$((60 * $1)) seed=0
targets=("${@:2}")
[ $# -gt 1 ] || targets=("${all[@]}")
for target in "${targets[@]}"; do
  [[ " ${all[*]} " == *" $target "* ]] || {
    echo "$target: no target; there are ${all[*]}" >&2
    exit 2
  }
done

scripts/install_dependencies.sh clang
cmake --preset fuzz >/dev/null
cmake --build --preset fuzz -j "$(nproc)" --target "${targets[@]/#/fuzz_}"

export build=build/fuzz
export UBSAN_OPTIONS=print_stacktrace=1
log_of() { echo "$build/logs/$1.log"; }
stat_of() { sed -n "s/^stat::$2: *//p" "$(log_of "$1")"; }

# What a target finds is kept in the build folder, and the next run begins with it.
fuzz() {
  local options=(-max_total_time="$seconds" -timeout=10 -rss_limit_mb=1024 -print_final_stats=1
    -seed="$seed" -artifact_prefix="$build/finds/$1/")
  [ ! -f "fuzz/dictionaries/$1.dict" ] || options+=(-dict="fuzz/dictionaries/$1.dict")
  local folders=("$build/found/$1" "fuzz/corpus/$1")
  [ ! -d "fuzz/regressions/$1" ] || folders+=("fuzz/regressions/$1")
  mkdir -p "$build/found/$1" "$build/finds/$1" "fuzz/corpus/$1"
  rm -f "$build/finds/$1/ended"
  if "$build/bin/fuzz_$1" "${options[@]}" "${folders[@]}" >"$(log_of "$1")" 2>&1 &&
    [ "$(stat_of "$1" number_of_executed_units)" -gt 0 ]; then
    touch "$build/finds/$1/ended"
  fi
}

# edges FUZZER FOLDER: how many edges the folder's inputs reach
edges() { "$build/bin/fuzz_$1" -runs=0 "$2" 2>&1 | sed -n 's/.*INITED cov: \([0-9]*\).*/\1/p'; }

merge() {
  local fewest=$build/merged/$1 corpus=fuzz/corpus/$1
  rm -rf "$fewest" && mkdir -p "$fewest"
  "$build/bin/fuzz_$1" -set_cover_merge=1 -use_counters=0 "$fewest" "$corpus" "$build/found/$1" \
    >"$build/logs/$1.merge.log" 2>&1
  if [ "$(edges "$1" "$fewest")" -gt "$(edges "$1" "$corpus")" ]; then
    rm -rf "$corpus" && mv "$fewest" "$corpus"
  fi
}
export -f fuzz edges merge log_of stat_of

mkdir -p "$build/logs"
each() { printf '%s\n' "${targets[@]}" | xargs -P "$(nproc)" -I{} bash -euo pipefail -c "$1 {}"; }
each fuzz
[ "$1" = check ] || each merge

row='%-18s %12s %9s %7s %7s %6s\n'
printf "$row" target executions "a second" edges corpus broken
broken=()
for target in "${targets[@]}"; do
  input=$(sed -n 's/.*Test unit written to //p' "$(log_of "$target")" | tail -1)
  if [ -n "$input" ]; then
    broken+=("$input; again: $build/bin/fuzz_$target $input")
    # Where nothing but what was printed outlives the run, the input can be made of it.
    broken+=("$target: $(grep -m1 -E '^broken: |ERROR: |runtime error: ' "$(log_of "$target")")")
    broken+=("$target, in base64: $(base64 -w0 "$input")")
  elif [ ! -e "$build/finds/$target/ended" ]; then
    broken+=("$target, which did not run to its end: see $(log_of "$target")")
  fi
  printf "$row" "$target" "$(stat_of "$target" number_of_executed_units)" \
    "$(stat_of "$target" average_exec_per_sec)" \
    "$(sed -n 's/.*cov: \([0-9]*\) .*/\1/p' "$(log_of "$target")" | tail -1)" \
    "$(find "fuzz/corpus/$target" -type f | wc -l)" "$([ -e "$build/finds/$target/ended" ] && echo - || echo yes)"
done
for line in "${broken[@]}"; do echo "broken by $line" >&2; done
[ ${#broken[@]} -eq 0 ]
