#!/bin/sh
# Measures what a step costs against a drawn frame, for five kinds of scenes, and how much quicker two
# processes are than one; calculates from that how much quicker 10, 100 and 1,000 machines are. Takes
# about a minute, of a machine that should do nothing else.
#
#   scripts/measure_farm.sh
set -e
cd "$(dirname "$0")/.."
grep -m 1 'model name' /proc/cpuinfo | sed 's/.*: //'
exec python3 scripts/farm_model.py build/release/bin/brisel
