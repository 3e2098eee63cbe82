#!/usr/bin/python3
"""Compares the speed of two builds: row by row of a benchmark, the two take turns.

Prints for each row how many times as fast this build is as the other (the median of all turns), and
the geometric mean of the rows. A row that one of them lacks is left out.

usage: compare_speed.py FOLDER [--bench NAME] [--filter REGEX] [--turns N]

FOLDER holds the other build's programs: the build/release/bin of another worktree.
"""

import argparse
import json
import pathlib
import statistics
import subprocess
import tempfile

HERE = pathlib.Path(__file__).parent.parent / "build/release/bin"


def rows(program, pattern):
    listed = subprocess.run([program, "--benchmark_list_tests", f"--benchmark_filter={pattern}"],
                            check=True, capture_output=True, text=True)
    return [line for line in listed.stdout.splitlines() if line and " " not in line]  # no table


def seconds(program, row):
    """Processor time of one pass of the row."""
    with tempfile.NamedTemporaryFile(suffix=".json") as out:
        subprocess.run([program, f"--benchmark_filter=^{row}$", "--benchmark_min_time=0.1",
                        f"--benchmark_out={out.name}", "--benchmark_out_format=json"],
                       check=True, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        return json.load(out)["benchmarks"][0]["cpu_time"]


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("folder", type=pathlib.Path, help="of the other build's programs")
    parser.add_argument("--bench", default="frame_bench")
    parser.add_argument("--filter", default="-^plain/", help="of rows; all but the plain ones")
    parser.add_argument("--turns", type=int, default=5)
    options = parser.parse_args()
    ours, theirs = HERE / options.bench, options.folder / options.bench
    known = set(rows(theirs, options.filter))
    ratios = []
    for row in rows(ours, options.filter):
        if row not in known:
            continue
        turns = []
        for turn in range(options.turns):
            order = (ours, theirs) if turn % 2 == 0 else (theirs, ours)
            taken = {program: seconds(program, row) for program in order}
            turns.append(taken[theirs] / taken[ours])
        ratios.append(statistics.median(turns))
        print(f"{row:<44} {ratios[-1]:6.2f}", flush=True)
    if ratios:
        print(f"{'geometric mean':<44} {statistics.geometric_mean(ratios):6.2f}")


if __name__ == "__main__":
    main()
