#!/usr/bin/python3
"""scripts/check_layers finds what it is there for, in a copy of the sources.

usage: check_layers_test.py SOURCE_FOLDER
"""

import pathlib
import shutil
import subprocess
import sys
import tempfile
import unittest

SOURCES = pathlib.Path(sys.argv[1]).resolve()


class CheckLayersTest(unittest.TestCase):
    def setUp(self):
        scratch = tempfile.TemporaryDirectory()
        self.addCleanup(scratch.cleanup)
        self.root = pathlib.Path(scratch.name)
        for folder in ("src", "scene", "hostkit", "cli", "desk"):
            shutil.copytree(SOURCES / folder, self.root / folder)
        (self.root / "docs").mkdir()
        shutil.copy(SOURCES / "docs/architecture.svg", self.root / "docs")

    def plant(self, file, line):
        file = self.root / file
        file.write_text(f"{line}\n{file.read_text() if file.exists() else ''}")

    def faults(self):
        run = subprocess.run([SOURCES / "scripts/check_layers", "--root", self.root],
                             stderr=subprocess.PIPE, text=True, check=False)
        self.assertEqual(run.returncode, 1 if run.stderr else 0)
        return run.stderr.splitlines()

    def test_the_sources_as_they_are_pass(self):
        self.assertEqual(self.faults(), [])

    def test_a_look_up_is_one_line_and_closes_a_circle(self):
        self.plant("src/core/random.h", '#include "engine/simulation.h"')
        self.plant("src/core/numbers.h", '#include "engine/particle.h"')
        faults = self.faults()
        self.assertIn("src/core looks up into src/engine: src/core/numbers.h:1 includes "
                      '"engine/particle.h" (and 1 more)', faults)
        self.assertTrue(any(fault.startswith("circle: src/core -> src/engine ")
                            or "-> src/core -> src/engine" in fault for fault in faults), faults)

    def test_a_way_down_that_is_not_declared(self):
        self.plant("hostkit/world.h", '#include "core/numbers.h"')
        self.assertIn("hostkit may not look into src/core: hostkit/world.h:1 includes "
                      '"core/numbers.h"', self.faults())

    def test_files_of_one_room_in_a_circle(self):
        self.plant("cli/support/left.h", '#include "cli/support/right.h"')
        self.plant("cli/support/right.h", '#include "cli/support/left.h"')
        self.assertEqual(self.faults(), ["circle: cli/support/left.h -> cli/support/right.h -> "
                                         "cli/support/left.h"])

    def test_the_system_outside_its_room(self):
        self.plant("src/engine/motion.cpp", "#include <unistd.h>")
        self.assertEqual(len(self.faults()), 1)
        self.assertIn("src/engine/motion.cpp:1: includes <unistd.h>", self.faults()[0])

    def test_a_folder_that_is_not_declared(self):
        self.plant("src/sound.h", "")
        self.assertIn("src: a room that scripts/check_layers does not know", self.faults()[0])

    def test_a_drawing_of_other_rooms(self):
        drawing = self.root / "docs/architecture.svg"
        drawing.write_text(drawing.read_text().replace("<title>src/contour</title>",
                                                       "<title>src/outline</title>"))
        self.assertEqual(self.faults(), [
            "docs/architecture.svg is drawn without src/contour, with src/outline; "
            "run scripts/check_layers --draw docs/architecture.svg"])


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
