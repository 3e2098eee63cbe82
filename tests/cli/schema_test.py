#!/usr/bin/python3
"""The schema of scenes takes what the program takes, and refuses what it refuses.

usage: schema_test.py BRISEL SCHEMA SOURCE_FOLDER
"""

import json
import pathlib
import subprocess
import sys
import tempfile
import tomllib
import unittest

from jsonschema import Draft7Validator

BRISEL, SCHEMA, SOURCES = (pathlib.Path(argument).resolve() for argument in sys.argv[1:4])

TAKEN = [
    '[scene]\nsize = [30000, 1]\nframes = 1000000\nfps = "30000/1001"\ndepth = 16\nquality = "low"',
    '[scene]\nfps = 0.5\npresets = ["fountain", "sparkle"]\npreroll = 1',
    '[params]\n"Type" = 3\n"Size" = 1000\n"Start" = [-1.5, 2]\n"Direction" = -720.5',
    '[params]\n"Color of particles" = "#fC6"\n"Terminate color" = [255, 0, 12]',
    '[params]\n"Terminate color" = "gold"\n"Size depend on source" = true\n"Rays count" = 7',
    '[params]\n"Size" = [{frame=0, value=1, ease="in-out"}, {frame="1.5s", value=2}]',
    '[params]\n"Size" = [{frame=0, value=1, ease=[0.2, -1, 1, 2]}, {frame=1, value=2}]',
    '[params]\n"Type" = [{frame=0, value="Type 6"}, {frame=9, value=1}]',
    '[mask]\npath = "M 0 0 L 9 9"\ninverted = true',
    '[mask]\npath = [{frame=0, value="M 0 0 L 9 9"}, {frame=4, value="M 1 1 L 9 9", ease="hold"}]',
    '[[layer]]\nname = "head"\npresets = ["comet"]\n[layer.mask]\npath = "M 0 0"\n'
    '[layer.params]\n"Type" = 3\n[[layer]]\n[params]\n"Size" = 1',
]

REFUSED = [
    "[scenes]", "[scene]\nframe = 3", "[scene]\nsize = [30001, 1]", "[scene]\nsize = [10]",
    "[scene]\nframes = 0", "[scene]\nframes = 1000001", "[scene]\nfps = 0", '[scene]\nfps = "fast"',
    "[scene]\ndepth = 10", '[scene]\nquality = "best"', "[scene]\npreroll = -1",
    '[scene]\npresets = "fountain"', '[scene]\nmask = "logo.svg"',
    '[params]\n"Sise" = 3', '[params]\n"Size" = 1000.5', '[params]\n"Size" = "big"',
    '[params]\n"Rays count" = 4.5', '[params]\n"Type" = "Type glow3"', '[params]\n"Type" = 13',
    '[params]\n"Direction" = 40000', '[params]\n"Start" = [0.5]', '[params]\n"Start" = [40000, 0]',
    '[params]\n"Color of particles" = "#ffcc6"', '[params]\n"Color of particles" = [1, 2, 256]',
    '[params]\n"Color of particles" = "golden"', '[params]\n"Size depend on source" = 1',
    '[params]\n"Emmiter" = 1', '[params]\n"Path" = 1', '[params]\n"Size" = [{frame=0}]',
    '[params]\n"Size" = [{frame=0, value=1, curve="in"}]',
    '[params]\n"Size" = [{frame=0, value=1, ease="inn"}]',
    '[params]\n"Size" = [{frame=0, value=1, ease=[2, 0, 1, 1]}]',
    '[params]\n"Size" = [{frame="1.5", value=1}]',
    '[params]\n"Type" = [{frame=0, value=1, ease="in"}]',
    "[layer]", "[[layer]]\nframes = 3", "[[layer]]\nname = 3", '[[layer]]\nmask = "logo.svg"',
    '[[layer]]\n[layer.params]\n"Sise" = 3', "layer = []", "[[layer]]\n" * 65,
    "[mask]\ninverted = true", '[mask]\npath = "M 0 0"\ninvert = true',
]


class SchemaTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        schema = json.loads(SCHEMA.read_text(encoding="utf-8"))
        Draft7Validator.check_schema(schema)
        cls.validator = Draft7Validator(schema)

    def faults(self, text):
        return [fault.message for fault in self.validator.iter_errors(tomllib.loads(text))]

    def program_takes(self, text):
        with tempfile.TemporaryDirectory() as folder:
            scene = pathlib.Path(folder, "scene.toml")
            scene.write_text(text, encoding="utf-8")
            return subprocess.run(
                [BRISEL, "panel", scene, "-o", pathlib.Path(folder, "panel.png")],
                stderr=subprocess.DEVNULL).returncode == 0

    def test_takes_what_the_program_takes(self):
        for text in TAKEN:
            with self.subTest(text):
                self.assertTrue(self.program_takes(text))
                self.assertEqual(self.faults(text), [])

    def test_refuses_what_the_program_refuses(self):
        for text in REFUSED:
            with self.subTest(text):
                self.assertFalse(self.program_takes(text))
                self.assertNotEqual(self.faults(text), [])

    def test_takes_the_scenes_that_ship(self):
        scenes = [*SOURCES.glob("examples/*.toml"), *SOURCES.glob("docs/manual/scenes/*.toml"),
                  *SOURCES.glob("library/thumbnails/*.toml")]
        self.assertGreater(len(scenes), 10)
        for scene in scenes:
            with self.subTest(scene.name):
                self.assertEqual(self.faults(scene.read_text(encoding="utf-8")), [])


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
