"""The Debian packages: built, checked by lintian, installed under a root of their own and used there.

usage: debian_test.py CPACK BUILD_FOLDER BRISEL FILTER SOURCE_FOLDER
"""

import gzip
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile
import unittest

CPACK, BUILD, BRISEL, FILTER, SOURCES = (pathlib.Path(path).resolve() for path in sys.argv[1:6])
HAS_PREVIEW = (BUILD / "bin/brisel-preview").exists()  # where Qt is
PACKAGES = {"brisel", "frei0r-brisel", "libbrisel-dev", "openfx-brisel"}
PACKAGES |= {"brisel-preview"} if HAS_PREVIEW else set()


def run(*command, **options):
    done = subprocess.run([str(part) for part in command], stdin=subprocess.DEVNULL,
                          capture_output=True, check=False, timeout=300, **options)
    if done.returncode != 0:
        raise AssertionError(f"{' '.join(map(str, command))}\n{(done.stdout + done.stderr).decode()}")
    return done.stdout


class DebianPackages(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = pathlib.Path(tempfile.mkdtemp(prefix="brisel-debian-"))
        cls.addClassCleanup(shutil.rmtree, cls.folder)
        run(CPACK, "-G", "DEB", "--config", BUILD / "CPackConfig.cmake", "-B", cls.folder)
        cls.files = sorted(cls.folder.glob("*.deb"))
        cls.root = cls.folder / "root"
        cls.install(cls.root)

    @classmethod
    def install(cls, root):
        for part in ("info", "updates", "triggers"):
            (root / "var/lib/dpkg" / part).mkdir(parents=True)
        (root / "var/lib/dpkg/status").touch()
        cls.dpkg(root, "--install", *cls.files)

    @staticmethod
    def dpkg(root, *action):
        # What the packages depend on is on this system, not under that root.
        run("dpkg", f"--root={root}", "--force-not-root,depends,bad-path", *action)

    def control(self, package, field):
        file = next(self.folder.glob(f"{package}_*.deb"))
        return run("dpkg-deb", "--field", file, field).decode()

    def test_lintian_finds_nothing(self):
        run("lintian", "--fail-on", "error,warning", *self.files)

    def test_what_they_ask_for(self):
        self.assertEqual({path.name.split("_")[0] for path in self.files}, PACKAGES)
        for name in ("ffmpeg", "libcairo2", "libopenexr-"):
            self.assertIn(name, self.control("brisel", "Depends"))
        self.assertIn("libstdc++6", self.control("frei0r-brisel", "Depends"))
        self.assertNotIn("libstdc++6", self.control("openfx-brisel", "Depends"))

    def test_program(self):
        """The module, and the presets by a link, are found from where the program is."""
        installed = self.root / "usr/bin/brisel"
        self.assertEqual(run(installed, "presets", "--names"),
                         run(BRISEL, "presets", "--names"))
        frames = []
        for program, examples in ((installed, self.root / "usr/share/doc/brisel/examples"),
                                  (BRISEL, SOURCES / "examples")):
            out = self.folder / f"frames{len(frames)}"
            out.mkdir()
            run(program, "render", examples / "embers.toml", "--preset", "sparkler", "--scale", "1/4",
                "--frames", "0-4", "-o", out / "%d.png")
            frames.append([(out / f"{frame}.png").read_bytes() for frame in range(5)])
        self.assertEqual(frames[0], frames[1])

    def test_filter(self):
        def frames(folder, filters):
            return run("ffmpeg", "-v", "error", "-i", SOURCES / "examples/media/dusk.mp4", "-vf",
                       "scale=512:288" + filters, "-frames:v", 10, "-f", "framemd5", "-",
                       env={**os.environ, "FREI0R_PATH": str(folder)})

        fountain = ",frei0r=filter_name=brisel:filter_params=|fountain"
        stars = frames(self.root / "usr/lib/frei0r-1", fountain)
        self.assertEqual(stars, frames(FILTER.parent, fountain))
        self.assertNotEqual(stars, frames(FILTER.parent, ",format=rgba"))

    def test_library(self):
        """Another project builds with what is installed."""
        build = self.folder / "consumer"
        usr = self.root / "usr"
        run("cmake", "-S", SOURCES / "tests/package/consumer", "-B", build, "-G", "Ninja",
            "-DCMAKE_BUILD_TYPE=Release", f"-DCMAKE_PREFIX_PATH={usr}",
            f"-DHEADERS={usr}/include/brisel")
        run("cmake", "--build", build)
        self.assertRegex(run(build / "consumer").decode(), "[1-9]+ stars, light")

    def test_where_debian_looks(self):
        share = self.root / "usr/share"
        for page in ("brisel", "brisel-render"):
            self.assertIn(b".TH", gzip.decompress((share / f"man/man1/{page}.1.gz").read_bytes()))
        for name in ("bash-completion/completions/brisel", "zsh/vendor-completions/_brisel",
                     "fish/vendor_completions.d/brisel.fish", "brisel/scene.schema.json",
                     "doc/brisel/manual.html", "mlt-7/frei0r/filter_frei0r.brisel.yml",
                     "kdenlive/effects/brisel_fireworks.xml"):
            self.assertGreater((share / name).stat().st_size, 100, name)

    @unittest.skipUnless(HAS_PREVIEW, "built without Qt")
    def test_preview(self):
        share = self.root / "usr/share"
        for name in ("applications/brisel-preview.desktop", "mime/packages/brisel-preview.xml",
                     "icons/hicolor/scalable/apps/brisel-preview.svg", "man/man1/brisel-preview.1.gz"):
            self.assertGreater((share / name).stat().st_size, 100, name)
        self.assertIn("libqt6widgets6", self.control("brisel-preview", "Depends"))
        self.assertNotIn("qt", self.control("brisel", "Depends").lower())
        help_text = run(self.root / "usr/bin/brisel", "preview", "--help",
                        env={**os.environ, "QT_QPA_PLATFORM": "offscreen"})
        self.assertIn(b"SCENE", help_text)

    def test_removal_leaves_nothing(self):
        root = self.folder / "another_root"
        self.install(root)
        self.assertTrue((root / "usr/bin/brisel").exists())
        self.dpkg(root, "--purge", *PACKAGES)
        self.assertEqual(os.listdir(root), ["var"])


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1] + sys.argv[6:])
