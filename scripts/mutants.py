#!/usr/bin/python3
"""Plants faults in the plug-ins and the scene reader, one at a time; says which the tests catch.

A fault is an operator, a comparison, a constant or a sign changed, a condition negated, a statement
dropped or arguments swapped, on a line that the seed chose among all lines of code. Each is built in
a worktree of its own, build/mutants/tree, and meets the tests of the rooms until one fails; a hang
counts as failing. What the compiler refuses, or turns into the same machine code, is not counted.

Everything is kept in build/mutants/SEED.json: an interrupted run goes on where it was, on the newest
commit, and --survivors tries those again that no test caught, after tests were added.

usage: mutants.py [--count N] [--seed N] [--folder FOLDER ...] [--survivors] [--report]
"""

import argparse
import collections
import hashlib
import json
import os
import pathlib
import random
import re
import resource
import signal
import subprocess
import sys
import time

ROOT = pathlib.Path(__file__).resolve().parent.parent
WORK = ROOT / "build/mutants"
TREE = WORK / "tree"
BUILD = TREE / "build/release"
FOLDERS = ["src/core", "src/contour", "src/engine", "src/render", "src/presets", "src/effect",
           "src/plugin", "src/look", "src/frei0r", "src/openfx", "scene"]
# Kernels of the wide instruction sets are not built: they take longest, and are the others' code.
NOT_BUILT = re.compile(r"/windows/|isa/avx")

# The quick ones first. What a program loads while it runs is a part of it.
PROGRAMS = {
    "scene_tests": [],
    "contour_tests": [],
    "unit_tests": [],
    "frei0r_tests": ["lib/frei0r-1/brisel.so"],
    "openfx_tests": ["lib/OFX/Brisel.ofx.bundle/Contents/Linux-x86-64/Brisel.ofx"],
    "plugin_tests": ["bin/VellixDrizzen_64.AEX"],
    "fault_tests": ["bin/VellixDrizzen_64.AEX", "lib/frei0r-1/brisel.so"],
}

# Headers that more objects than these read are left out: types and the numbers of parameters and of
# the host's interface, which would take minutes each to build.
MOST_READERS = 12
SLOW = 0.5  # seconds: tests that take longer come last

SWAPS = {"<": "<= >", "<=": "< >=", ">": ">= <", ">=": "> <=", "==": "!=", "!=": "==", "&&": "||",
         "||": "&&", "+": "-", "-": "+", "*": "/", "/": "*", "%": "*", "&": "|", "|": "&",
         "<<": ">>", ">>": "<<", "+=": "-=", "-=": "+=", "*=": "/=", "/=": "*=", "|=": "&="}
BINARY = re.compile(r"(?<= )(" + "|".join(map(re.escape, sorted(SWAPS, key=len, reverse=True))) +
                    r")(?= |$)")
STEP = re.compile(r"\+\+|--")
NUMBER = re.compile(r"(?<![\w.'])(0x[0-9A-Fa-f]+|\d[\d']*(?:\.\d*)?(?:e[+-]?\d+)?)(f|u|U|L)*(?![\w.'])")
TRUTH = re.compile(r"\b(true|false)\b")
SIGN = re.compile(r"(?:(?<=[(\[{=?:,] )|(?<=[(\[{])|(?<=return ))-(?=[\w(])")
CONDITION = re.compile(r"\b(?:if|while) \(")
STATEMENT = re.compile(r"\s+(?:[\w.:\[\]]|->)+(?:\(.*\)|(?: [-+*/|&]?= .*)|\+\+|--);$")
DECLARATION = re.compile(r"\s*(#|template|using |namespace|static_assert|friend|class |struct |enum )")
PARAMETER = re.compile(r"[\w>][&*]? \w+$")  # of a function that is declared, not called
STRING = re.compile(r'"(?:\\.|[^"\\])*"|(?<!\w)\'(?:\\.|[^\'\\])+\'|//.*|/\*.*?\*/')


def blanked(line):
    """The line without comments and text, as long as it was."""
    return STRING.sub(lambda found: "\0" * len(found.group()), line)


def closing(text, at):
    """Where the parenthesis that opens at AT closes, and the commas directly inside it."""
    depth, commas = 0, []
    for i in range(at, len(text)):
        if text[i] in "([{":
            depth += 1
        elif text[i] in ")]}":
            depth -= 1
            if depth == 0:
                return i, commas
        elif text[i] == "," and depth == 1:
            commas.append(i)
    return None, commas


def other_number(found):
    text, suffix = found.group(1), found.group()[len(found.group(1)):]
    if text.startswith("0x"):
        return hex(int(text, 16) ^ 1) + suffix
    if "." in text or "e" in text:
        value = float(text.replace("'", ""))
        return repr(value * 1.25 if value else 1.0) + suffix
    value = int(text.replace("'", ""))
    return [f"{value + 1}{suffix}"] + ([f"{value - 1}{suffix}"] if value else [])


def changes(line, before):
    """All ways to put one fault into LINE, which follows BEFORE: what was, what is, the new line."""
    code = blanked(line)
    if DECLARATION.match(code):
        return
    def put(start, end, new):
        return line[start:end].strip(), new.strip(), line[:start] + new + line[end:]
    for found in BINARY.finditer(code):
        if "\0" in (code[found.start() - 2], code[found.end() + 1:found.end() + 2]):
            continue  # text is joined
        for other in SWAPS[found.group()].split():
            yield put(found.start(), found.end(), other)
    for found in STEP.finditer(code):
        yield put(found.start(), found.end(), "--" if found.group() == "++" else "++")
    for found in NUMBER.finditer(code):
        others = other_number(found)
        for other in [others] if isinstance(others, str) else others:
            yield put(found.start(), found.end(), other)
    for found in TRUTH.finditer(code):
        yield put(found.start(), found.end(), "false" if found.group() == "true" else "true")
    for found in SIGN.finditer(code):
        yield put(found.start(), found.end(), "")
    for found in CONDITION.finditer(code):
        start = found.end() - 1
        end, _ = closing(code, start)
        if end and ";" not in code[start:end]:
            yield put(start + 1, end, f"!({line[start + 1:end]})")
    if STATEMENT.match(code) and before.rstrip()[-1:] in ("", ";", "{", "}"):
        if not code.strip().startswith("return"):
            yield put(0, len(line), ";")
    for found in re.finditer(r"\w\(", code):
        end, commas = closing(code, found.end() - 1)
        if end and commas:
            first, second = (found.end(), commas[0]), (commas[0] + 1, (commas + [end])[1])
            one, other = line[slice(*first)].strip(), line[slice(*second)].strip()
            if one != other and not PARAMETER.search(one) and not PARAMETER.search(other):
                yield put(first[0], second[1], f"{other}, {one}")


def readers():
    """How many objects of the build each file goes into."""
    listed = subprocess.run(["ninja", "-C", BUILD, "-t", "deps"], check=True, capture_output=True,
                            text=True).stdout
    return collections.Counter(
        os.path.relpath(os.path.realpath(BUILD / line.strip()), TREE)
        for line in listed.splitlines() if line.startswith(" ") and line.endswith(".h"))


def choose(folders, seed):
    """Faults in the seed's order: the line first, each as likely as any other, then the fault."""
    read_by = readers()
    lines = []
    for folder in folders:
        files = sorted([*(ROOT / folder).rglob("*.cpp"), *(ROOT / folder).rglob("*.h")])
        for path in files:
            name = str(path.relative_to(ROOT))
            if NOT_BUILT.search(name) or read_by[name] > MOST_READERS:
                continue
            before = ""
            for number, line in enumerate(path.read_text().splitlines(), 1):
                faults = list(changes(line, before))
                if faults:
                    lines.append((name, number, line, faults))
                if blanked(line).strip("\0 "):
                    before = blanked(line).rstrip("\0 ")
    dice = random.Random(seed)
    dice.shuffle(lines)
    for name, number, line, faults in lines:
        was, became, new = dice.choice(faults)
        yield {"file": name, "line": number, "text": line, "was": was, "is": became, "new": new}


def build(target):
    done = subprocess.run(["cmake", "--build", BUILD, "-j1", "--target", *target],
                          stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True)
    return done.returncode == 0, done.stdout


def code_of(program):
    """What tells whether a program, with what it loads, is the one that it was."""
    digest = hashlib.sha256()
    for file in [f"bin/{program}", *PROGRAMS[program]]:
        digest.update((BUILD / file).read_bytes())
    return digest.hexdigest()


def limit():
    endless = resource.RLIM_INFINITY
    resource.setrlimit(resource.RLIMIT_AS, (8 << 30, endless))
    resource.setrlimit(resource.RLIMIT_FSIZE, (256 << 20, endless))
    resource.setrlimit(resource.RLIMIT_CORE, (0, 0))


def run(program, tests, seconds):
    """The test of TESTS, a filter, that fails first, or None; and what was printed."""
    log = WORK / "test.log"
    with log.open("w") as out:
        running = subprocess.Popen(
            [BUILD / "bin" / program, f"--gtest_filter={tests}", "--gtest_fail_fast",
             "--gtest_color=no"],
            cwd=WORK, stdout=out, stderr=subprocess.STDOUT, start_new_session=True, preexec_fn=limit)
        try:
            status = running.wait(seconds)
        except subprocess.TimeoutExpired:
            status = None
        finally:
            if running.poll() is None:
                os.killpg(running.pid, signal.SIGKILL)
                running.wait()
    text = log.read_text(errors="replace")
    if status == 0:
        return None, text
    found = re.findall(r"^\[  FAILED  \] ([\w/.]+)", text, re.M)
    if found:
        return found[0], text
    at = re.findall(r"^\[ RUN      \] (\S+)", text, re.M)
    return f"{at[-1] if at else program} ({'crashes' if status else 'hangs'})", text


def prepare():
    """The newest commit in the tree, built. Of each program, what tells its code from another, and how
    many seconds each of its tests takes."""
    commit = subprocess.run(["git", "-C", ROOT, "rev-parse", "HEAD"], check=True, text=True,
                            capture_output=True).stdout.strip()
    if not (TREE / ".git").exists():
        subprocess.run(["git", "-C", ROOT, "worktree", "prune"], check=True)
        subprocess.run(["git", "-C", ROOT, "worktree", "add", "-q", "--detach", TREE, commit],
                       check=True)
    subprocess.run(["git", "-C", TREE, "checkout", "-q", "-f", "--detach", commit], check=True)
    with (TREE / "src/render/CMakeLists.txt").open("a") as rules:  # else each takes half a minute
        rules.write("set_source_files_properties(isa/plain.cpp isa/sse2.cpp PROPERTIES COMPILE_OPTIONS \"-O1;-w\")\n")
    subprocess.run(["cmake", "--preset", "release", "-DBRISEL_WIDE_KERNELS=OFF"], cwd=TREE, check=True,
                   stdout=subprocess.DEVNULL)
    works, output = build([*PROGRAMS])
    if not works:
        sys.exit(f"{output[-3000:]}\nThe tree does not build: no fault was planted.")
    file = WORK / "sound.json"
    known = json.loads(file.read_text()) if file.exists() else {}
    sound = {}
    for program in PROGRAMS:
        code = code_of(program)
        sound[program] = known.get(program)
        if not sound[program] or sound[program]["code"] != code:
            failure, text = run(program, "*", 900)
            if failure:
                sys.exit(f"{program}: {failure} fails before any fault was planted: mend it first.")
            taken = re.findall(r"^\[       OK \] (\S+?)(?:,.*)? \((\d+) ms\)", text, re.M)
            sound[program] = {"code": code, "seconds": {test: int(ms) / 1000 for test, ms in taken}}
    file.write_text(json.dumps(sound, indent=1))
    return sound


def plant(mutant):
    """Changes the line, which other commits may have moved; gives what undoes it, or None if it is gone."""
    path = TREE / mutant["file"]
    original = path.read_text()
    lines = original.splitlines()
    places = [i for i, line in enumerate(lines) if line == mutant["text"]]
    if not places:
        return None
    place = min(places, key=lambda i: abs(i + 1 - mutant["line"]))
    mutant["line"] = place + 1
    lines[place] = mutant["new"]
    path.write_text("\n".join(lines) + "\n")
    return lambda: path.write_text(original)


def fate(sound):
    """What becomes of the tree as it is: caught by a test, survived, the same code, or no program."""
    changed = []
    for program, known in sound.items():  # the quick tests of all programs first
        works, _ = build([program])
        if not works:
            return {"result": "refused by the compiler"}
        if code_of(program) == known["code"]:
            continue
        changed.append(program)
        slow = [test for test, seconds in known["seconds"].items() if seconds > SLOW]
        quick = sum(seconds for seconds in known["seconds"].values() if seconds <= SLOW)
        failure, _ = run(program, "-" + ":".join(slow), 30 + 5 * quick)
        if failure:
            return {"result": "caught", "by": failure}
    left = [(seconds, program, test) for program in changed
            for test, seconds in sound[program]["seconds"].items() if seconds > SLOW]
    for seconds, program, test in sorted(left):
        failure, _ = run(program, test, 30 + 5 * seconds)
        if failure:
            return {"result": "caught", "by": failure}
    return {"result": "survived" if changed else "same code"}


def report(mutants):
    tried = [m for m in mutants if m.get("result") in ("caught", "survived")]
    for m in tried:
        by = m.get("by", "survived")
        print(f"{m['file']}:{m['line']}: {m['was']!r} became {m['is']!r}: {by}")
    print()
    print(f"{'folder':<14} {'caught':>6} {'of':>5}")
    rooms = sorted({"/".join(m["file"].split("/")[:-1][:2]) for m in tried})
    for room in rooms:
        inside = [m for m in tried if m["file"].startswith(room + "/")]
        print(f"{room:<14} {sum(m['result'] == 'caught' for m in inside):>6} {len(inside):>5}")
    caught = sum(m["result"] == "caught" for m in tried)
    print(f"{'all':<14} {caught:>6} {len(tried):>5}   {100 * caught / max(1, len(tried)):.1f} %")
    for result in ("same code", "refused by the compiler", "gone"):
        print(f"{result}, not counted: {sum(m.get('result') == result for m in mutants)}")


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--count", type=int, default=200, help="of faults that meet the tests")
    parser.add_argument("--seed", type=int, default=1, help="chooses the faults")
    parser.add_argument("--folder", nargs="+", default=FOLDERS, help="of the sources to change")
    parser.add_argument("--survivors", action="store_true", help="try those again that survived")
    parser.add_argument("--report", action="store_true", help="only print what is known")
    options = parser.parse_args()

    WORK.mkdir(parents=True, exist_ok=True)
    log = WORK / f"{options.seed}.json"
    sound = None if options.report else prepare()
    mutants = (json.loads(log.read_text()) if log.exists()
               else list(choose(options.folder, options.seed)))
    if options.survivors:
        for mutant in mutants:
            if mutant.get("result") == "survived":
                del mutant["result"]
    tried = sum(m.get("result") in ("caught", "survived") for m in mutants)
    for mutant in mutants:
        if options.report or tried >= options.count:
            break
        if "result" in mutant:
            continue
        begin = time.monotonic()
        undo = plant(mutant)
        try:
            mutant.update(fate(sound) if undo else {"result": "gone"})
        finally:
            if undo:
                undo()
        tried += mutant["result"] in ("caught", "survived")
        log.write_text(json.dumps(mutants, indent=1))
        print(f"{tried:4} {mutant['file']}:{mutant['line']}: {mutant['was']!r} became "
              f"{mutant['is']!r}: {mutant.get('by', mutant['result'])} "
              f"({time.monotonic() - begin:.0f} s)", flush=True)
    report(mutants)


if __name__ == "__main__":
    main()
