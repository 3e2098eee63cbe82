#!/usr/bin/python3
"""Makes the manual page that the effect opens: library/Corvane/Documentation/corvanedoc.html.

What the module declares, the texts in docs/manual/ and the preset files go into one page; the
effect renders its pictures itself. With --check nothing is rendered or written: the page's text is
compared with what would be made now, and its anchors and links are tested.
"""

import argparse
import json
import pathlib
import subprocess
import sys
import tempfile

from manual.check import faults, without_pictures
from manual.page import ManualError, make_page
from manual.pictures import Pictures

ROOT = pathlib.Path(__file__).resolve().parent.parent
PAGE = ROOT / "library/Corvane/Documentation/corvanedoc.html"
MOST_BYTES = 1_600_000  # it is kept with its history, and opened from slow disks


def parse_arguments():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--brisel", type=pathlib.Path, default=ROOT / "build/release/bin/brisel",
                        help="the command line (default: the release build's)")
    parser.add_argument("--check", action="store_true",
                        help="compare the page's text with what would be made; write nothing")
    return parser.parse_args()


def listed(brisel, what):
    listing = subprocess.run([brisel, what, "--json"], check=True, stdout=subprocess.PIPE)
    return json.loads(listing.stdout)


def main():
    arguments = parse_arguments()
    declared, presets = (listed(arguments.brisel, what) for what in ("params", "presets"))
    with tempfile.TemporaryDirectory() as scratch:
        pictures = None if arguments.check else Pictures(arguments.brisel, ROOT, scratch)
        page = make_page(ROOT, declared, presets, pictures)
    found = faults(page)
    if arguments.check:
        committed = PAGE.read_text(encoding="utf-8") if PAGE.is_file() else ""
        if without_pictures(committed) != page:
            found.append("corvanedoc.html is out of date: run scripts/make_manual.py")
        if len(committed) > MOST_BYTES:
            found.append(f"corvanedoc.html is larger than {MOST_BYTES} bytes: "
                         "use fewer or smaller pictures")
    elif not found:
        PAGE.parent.mkdir(parents=True, exist_ok=True)
        PAGE.write_text(page, encoding="utf-8")
        print(f"{PAGE.relative_to(ROOT)}: {len(page) // 1024} KB")
    for fault in found:
        print(f"make_manual: {fault}", file=sys.stderr)
    return 1 if found else 0


if __name__ == "__main__":
    try:
        sys.exit(main())
    except (ManualError, OSError, subprocess.CalledProcessError) as error:
        sys.exit(f"make_manual: {error}")
