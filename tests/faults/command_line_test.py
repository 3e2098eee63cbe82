#!/usr/bin/python3
"""Every call of the system that the command line makes fails once, in turn. Then there is one sentence,
nothing is left but complete files, and the next try works; interrupted and short calls are no failure.

usage: command_line_test.py BRISEL FAILING_CALLS_LIBRARY [all]

Without "all" each command gets a sample: calls farther and farther from the start.
"""

import errno
import os
import pathlib
import shlex
import subprocess
import sys
import tempfile

BRISEL, LIBRARY = (pathlib.Path(argument).resolve() for argument in sys.argv[1:3])
ALL = sys.argv[3:] == ["all"]

SCENE = """[scene]
size = [32, 16]
frames = 3
presets = ["comet"]
mask = "path.svg#a"
[params]
"Mix with original" = "Add"
"Type of halo" = "Normal"
"""
SVG = '<svg xmlns="http://www.w3.org/2000/svg"><path id="a" d="M 4 4 L 28 4 L 16 12 Z"/></svg>'

# A command, and what it needs beforehand.
COMMANDS = {
    "render s.toml -o f_%d.png": [],
    "render s.toml -o f_%d.exr --jobs 2 --threads 2": [],
    "render s.toml -i in.mov -o o.mov --codec png --jobs 2": ["render s.toml -o in.mov"],
    "render s.toml -o f_%d.png --from-state s_000002.state --frames 2": ["checkpoint s.toml --every 1"],
    "checkpoint s.toml --every 1": [],
    "join a.mov b.mov -o o.mov": ["render s.toml -o a.mov --frames 0", "render s.toml -o b.mov --frames 1-2"],
    "sheet s.toml -o o.png": [],
}

# Which calls fail, and how: 0 comes short by half.
FAILURES = [
    ("open open64 fopen fopen64 mkostemp memfd_create pipe2", errno.EMFILE),
    ("read pread fstat", errno.EIO),
    ("write writev fwrite fclose", errno.ENOSPC),
    ("rename", errno.EIO),
    ("posix_spawnp pthread_create", errno.EAGAIN),
    ("mmap", errno.ENOMEM),
    ("new", errno.ENOMEM),
    ("read pread write waitid waitpid poll", errno.EINTR),
    ("read write", 0),
]


def run(command, folder, failure=None):
    environment = dict(os.environ)
    if failure is not None:
        calls, error, nth = failure
        environment |= {"LD_PRELOAD": str(LIBRARY), "FAIL_CALL": calls, "FAIL_ERROR": str(error),
                        "FAIL_NTH": str(nth), "FAIL_PROGRAM": BRISEL.name, "FAIL_LOG": str(folder / "log")}
    return subprocess.run([BRISEL, *shlex.split(command)], cwd=folder, env=environment, check=False,
                          capture_output=True, timeout=60)


def files_in(folder):
    return {path.name: path.read_bytes() for path in folder.iterdir() if path.name != "log"}


def complaints(answer, found, before, expected, failure):
    """What is wrong with what a command did."""
    written = {name: content for name, content in found.items() if name not in before}
    if any(found.get(name) != content for name, content in before.items()):
        yield "changed what was there"
    if any(content != expected["files"].get(name) for name, content in written.items()):
        yield f"left {sorted(name for name in written if written[name] != expected['files'].get(name))}"
    if answer.returncode == 0:
        if written.keys() != expected["files"].keys() or answer.stdout != expected["output"]:
            yield "says that it is done"
        return
    if failure[1] in (0, errno.EINTR):
        yield "takes an interruption for a failure"
    lines = answer.stderr.decode(errors="replace").splitlines()
    said = [line for line in lines if line.startswith("brisel: ")]
    if answer.returncode != 1 or len(said) != 1 or said != lines[-1:]:
        yield "says no single sentence"


def sweep(command, needed):
    """Fails the command's calls; returns how many were, and prints what went wrong."""
    failed = wrong = 0
    with tempfile.TemporaryDirectory() as scratch:
        folder = pathlib.Path(scratch)
        (folder / "s.toml").write_text(SCENE, encoding="utf-8")
        (folder / "path.svg").write_text(SVG, encoding="utf-8")
        for first in needed:
            run(first, folder).check_returncode()
        before = files_in(folder)
        whole = run(command, folder)
        whole.check_returncode()
        expected = {"output": whole.stdout,
                    "files": {n: c for n, c in files_in(folder).items() if n not in before}}
        for calls, error in FAILURES:
            nth = 1
            while True:
                for name in files_in(folder).keys() - before.keys():
                    (folder / name).unlink()
                (folder / "log").write_text("", encoding="utf-8")
                try:
                    answer = run(command, folder, (calls, error, nth))
                except subprocess.TimeoutExpired:
                    print(f"{command}: call {nth} of {calls}: hangs", flush=True)
                    wrong += 1
                    break
                call = (folder / "log").read_text(encoding="utf-8").strip()
                if not call:
                    break
                failed += 1
                for what in complaints(answer, files_in(folder), before, expected, (calls, error)):
                    wrong += 1
                    print(f"{command}: call {nth} of {calls}, {call}, errno {error}: {what}\n"
                          f"    exit {answer.returncode}: {answer.stderr.decode(errors='replace')}",
                          flush=True)
                nth += 1 if ALL and calls != "new" else 1 + (nth // 50 if ALL else 7 * nth)
    return failed, wrong


def main():
    results = [sweep(command, needed) for command, needed in COMMANDS.items()]
    failed, wrong = (sum(column) for column in zip(*results, strict=True))
    print(f"{failed} calls failed, {wrong} faults")
    sys.exit(wrong != 0 or failed < 100)


if __name__ == "__main__":
    main()
