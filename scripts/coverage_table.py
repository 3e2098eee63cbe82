#!/usr/bin/python3
"""Prints a table of the lines and branches that ran, by folder, and the lines that did not; or of
several programs, each with the files that it entered.

usage: coverage_table.py FILE.lcov [FOLDER ...]
       coverage_table.py --entered FILE.lcov ...
"""

import collections
import pathlib
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
CODE = ("src/", "scene/", "hostkit/", "cli/")


def read(path):
    """Of each file, how often each of its lines and branches ran."""
    files = {}
    for record in path.read_text().splitlines():
        kind, _, rest = record.partition(":")
        if kind == "SF":
            name = str(pathlib.Path(rest).resolve()).removeprefix(f"{ROOT}/")
            lines, branches = files.setdefault(name, ({}, {}))
        elif kind == "DA":
            line, count = rest.split(",")[:2]
            lines[int(line)] = max(lines.get(int(line), 0), int(count))
        elif kind == "BRDA":  # once for each instance of a template
            *branch, count = rest.split(",")
            count = 0 if count == "-" else int(count)
            branches[tuple(branch)] = max(branches.get(tuple(branch), 0), count)
    files = {name: counts for name, counts in files.items() if name.startswith(CODE)}
    for name, (lines, branches) in files.items():
        for line in excluded(ROOT / name):
            lines.pop(line, None)
            for branch in [branch for branch in branches if int(branch[0]) == line]:
                del branches[branch]
    return files


def excluded(path):
    """The lines that no build can reach, between the marks that lcov knows."""
    inside = False
    for number, line in enumerate(path.read_text().splitlines(), 1):
        inside = (inside or "LCOV_EXCL_START" in line) and "LCOV_EXCL_STOP" not in line
        if inside:
            yield number


def ranges(numbers):
    """As "3-5 9"."""
    parts = []
    for number in numbers:
        if parts and parts[-1][1] == number - 1:
            parts[-1][1] = number
        else:
            parts.append([number, number])
    return " ".join(str(a) if a == b else f"{a}-{b}" for a, b in parts)


def share(ran, all_of):
    return f"{100 * ran / all_of:7.1f} %" if all_of else f"{'-':>9}"


def entered(paths):
    """For each program the lines of the files in which it ran at all, and the least reached of them."""
    print(f"{'program':<16} {'files':>6} {'lines':>7} {'reached':>9}  least")
    for path in paths:
        counts = {name: [count > 0 for count in lines.values()] for name, (lines, _) in read(path).items()}
        counts = {name: ran for name, ran in counts.items() if any(ran)}
        ran, lines = sum(map(sum, counts.values())), sum(map(len, counts.values()))
        least = sorted(counts, key=lambda name: sum(counts[name]) / len(counts[name]))[:3]
        told = ", ".join(f"{name} {100 * sum(counts[name]) // len(counts[name])} %" for name in least)
        print(f"{path.stem:<16} {len(counts):>6} {lines:>7} {share(ran, lines)}  {told}")


def main():
    if sys.argv[1] == "--entered":
        entered([pathlib.Path(name) for name in sys.argv[2:]])
        return
    files = read(pathlib.Path(sys.argv[1]))
    wanted = [folder.rstrip("/") + "/" for folder in sys.argv[2:]]
    rooms = collections.defaultdict(lambda: [0, 0, 0, 0])
    for name, counts in sorted(files.items()):
        room = "/".join(name.split("/")[:2]) if name.startswith(("src/", "cli/")) else name.split("/")[0]
        for key in (room if not room.endswith(".cpp") else "cli", "all"):
            for i, counted in enumerate(counts):
                rooms[key][2 * i] += sum(count > 0 for count in counted.values())
                rooms[key][2 * i + 1] += len(counted)
        missed = [line for line, count in sorted(counts[0].items()) if count == 0]
        if missed and name.startswith(tuple(wanted)) and wanted:
            print(f"{name}: {ranges(missed)}")
    print(f"{'folder':<16} {'lines':>7} {'reached':>9} {'branches':>9} {'reached':>9}")
    for room in [*sorted(set(rooms) - {"all"}), "all"]:
        lines_ran, lines, branches_ran, branches = rooms[room]
        print(f"{room:<16} {lines:>7} {share(lines_ran, lines)} {branches:>9} {share(branches_ran, branches)}")


if __name__ == "__main__":
    main()
