#!/bin/sh
# Prints what painting is measured by: ratios to cairo, to copying and to the plain kernels, how the
# cost of frames and emitters grows, and what threads give. --instructions=NAME chooses the
# instruction set: plain, sse2, avx2, avx512; on ARM plain, neon.
#
#   scripts/measure.sh [--instructions=NAME]
set -e
bin=$(dirname "$0")/../build/release/bin
grep -m 1 'model name' /proc/cpuinfo | sed 's/.*: //'
"$bin/sprite_bench" --benchmark_min_time=0.02 "$@"
echo
"$bin/frame_bench" --benchmark_min_time=0.1 "$@"
echo
"$bin/thread_bench"
echo
"$bin/emission_bench" --benchmark_min_time=0.05 2>/dev/null
echo
"$bin/filter_bench"
