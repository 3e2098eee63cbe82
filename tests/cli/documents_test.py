#!/usr/bin/python3
"""Every scene in the documents renders, fragments too, and passes the schema.

usage: documents_test.py BRISEL SCHEMA SOURCE_FOLDER
"""

import html
import json
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import tomllib
import unittest

from jsonschema import Draft7Validator

BRISEL, SCHEMA, SOURCES = (pathlib.Path(argument).resolve() for argument in sys.argv[1:4])

STAR = '<svg><path id="star" d="M 8 4 L 40 16 L 12 30 Z"/></svg>'


def scenes_of(document):
    """The TOML in a Markdown document, or in a chapter of the manual."""
    text = document.read_text(encoding="utf-8")
    if document.suffix == ".md":
        return re.findall(r"^```toml\n(.*?)^```", text, re.M | re.DOTALL)
    blocks = map(html.unescape, re.findall(r"<pre[^>]*><code>(.*?)</code>", text, re.DOTALL))
    return [block for block in blocks if re.search(r"^\[(scene|params|mask|\[layer\])\]$", block, re.M)]


def documents():
    found = [SOURCES / "README.md", *SOURCES.glob("docs/**/*.md"),
             *SOURCES.glob("docs/manual/chapters/*.html")]
    return {document.relative_to(SOURCES): scenes_of(document) for document in found}


class DocumentsTest(unittest.TestCase):
    def setUp(self):
        self.validator = Draft7Validator(json.loads(SCHEMA.read_text(encoding="utf-8")))
        scratch = tempfile.TemporaryDirectory()
        self.addCleanup(scratch.cleanup)
        self.folder = pathlib.Path(scratch.name)
        # The files that scenes name, relative to them.
        media = SOURCES / "examples/media"
        shutil.copytree(media, self.folder / "examples/media")
        shutil.copytree(media, self.folder / "media")
        for file in media.iterdir():
            shutil.copy(file, self.folder)
        (self.folder / "logo.svg").write_text(STAR, encoding="utf-8")

    def test_every_scene_renders(self):
        for document, scenes in documents().items():
            for scene in scenes:
                with self.subTest(document, scene=scene):
                    self.render(scene)

    def render(self, scene):
        (self.folder / "scene.toml").write_text(scene, encoding="utf-8")
        faults = [fault.message for fault in self.validator.iter_errors(tomllib.loads(scene))]
        self.assertEqual(faults, [])
        result = subprocess.run(
            [BRISEL, "render", "scene.toml", "-o", "frame_%d.png", "--size", "64x36",
             "--frames", "0-1", "--overwrite"],
            cwd=self.folder, stderr=subprocess.PIPE, text=True)
        self.assertEqual(result.returncode, 0, result.stderr)

    def test_scenes_are_found(self):
        with_scenes = {str(document) for document, scenes in documents().items() if scenes}
        expected = {"README.md", "docs/scene.md", "docs/manual/chapters/command_line.html"}
        self.assertLessEqual(expected, with_scenes)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
