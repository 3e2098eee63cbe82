#!/usr/bin/python3
"""The filter in the hosts that people use: frames are the same bytes as the command line renders.

usage: hosts_test.py BRISEL FILTER SHARE_FOLDER SOURCE_FOLDER CLASS...
"""

import os
import pathlib
import shutil
import subprocess
import sys
import tempfile
import unittest

BRISEL, FILTER, SHARE, SOURCES = (pathlib.Path(argument).resolve() for argument in sys.argv[1:5])
MEDIA = SOURCES / "examples/media"
WIDTH, HEIGHT, FRAMES = 512, 288, 40

SCENES = {
    "keyframes": """
        [scene]
        presets = ["fountain", "sapphire"]
        [params]
        "Size" = [ { frame = 0, value = 2 }, { frame = "1s", value = 9, ease = "in-out" } ]
        "Start" = [ { frame = 0, value = [0.2, 0.9] }, { frame = 39, value = [0.8, 0.6] } ]
        "Type of halo" = [ { frame = 0, value = "None" }, { frame = 20, value = "Star" } ]
        """,
    "mask": """
        [scene]
        preroll = 20
        fps = 25
        [mask]
        path = [ { frame = 0, value = "M 40 40 L 400 60 L 200 240 Z" },
                 { frame = 30, value = "M 80 40 L 440 60 L 200 140 Z" } ]
        [params]
        "Size" = 3
        "Intensity" = 30
        """,
    "layers": """
        [[layer]]
        presets = ["snowfall"]
        [[layer]]
        presets = ["comet"]
        [layer.params]
        "Mix with original" = "Normal"
        """,
    "layers alone": """
        [params]
        "Mix with original" = "Replace"
        [[layer]]
        presets = ["snowfall"]
        [[layer]]
        presets = ["comet"]
        """,
    "clip": """
        [params]
        "Standard path" = "Source as raster mask"
        "Color schema" = "Source"
        "Size depend on source" = true
        "Size" = 8
        "Intensity" = 40
        """,
}


def run(*command, **options):
    done = subprocess.run([str(part) for part in command], stdin=subprocess.DEVNULL,
                          capture_output=True, check=False,
                          timeout=300, **options)
    if done.returncode != 0:
        raise AssertionError(f"{' '.join(map(str, command))}\n{done.stderr.decode()[-2000:]}")
    return done


class HostTest(unittest.TestCase):
    """A folder for each class, with a clip as numbered pictures, so that all get the same RGB."""

    @classmethod
    def setUpClass(cls):
        cls.folder = pathlib.Path(tempfile.mkdtemp(prefix="brisel-hosts-"))
        cls.addClassCleanup(shutil.rmtree, cls.folder)
        cls.environment = {**os.environ, "FREI0R_PATH": str(FILTER.parent),
                           "HOME": str(cls.folder), "XDG_RUNTIME_DIR": str(cls.folder),
                           "TMPDIR": str(cls.folder)}  # where one notes that it is starting
        cls.folder.chmod(0o700)
        cls.clip = cls.pictures("clip", WIDTH, HEIGHT, FRAMES)
        cls.input = cls.raw_frames(cls.clip, WIDTH, HEIGHT)
        cls.rendered = {}

    @classmethod
    def pictures(cls, name, width, height, frames):
        (cls.folder / name).mkdir()
        pattern = cls.folder / name / "%04d.png"
        run("ffmpeg", "-v", "error", "-i", MEDIA / "dusk.mp4", "-vf", f"scale={width}:{height}",
            "-frames:v", frames, pattern)
        return pattern

    @classmethod
    def raw_frames(cls, pattern, width, height, *options, filters="null"):
        done = run("ffmpeg", "-v", "error", *options, "-i", pattern, "-vf", filters, "-f", "rawvideo",
                   "-pix_fmt", "rgba", "-")
        return cls.split(done.stdout, width, height)

    @staticmethod
    def split(raw, width, height):
        size = width * height * 4
        return [raw[at:at + size] for at in range(0, len(raw), size)]

    @classmethod
    def scene(cls, text):
        file = cls.folder / f"scene_{len(list(cls.folder.glob('scene_*')))}.toml"
        file.write_text(text, encoding="utf-8")
        return file

    @classmethod
    def by_brisel(cls, scene, clip=None, frames=FRAMES, size=(WIDTH, HEIGHT), filters="null"):
        """What the command line renders of a scene, given by its file, over the clip, filtered."""
        out = pathlib.Path(tempfile.mkdtemp(dir=cls.folder))
        run(BRISEL, "render", scene, "-i", clip or cls.clip, "--fps", 25, "--frames",
            f"0-{frames - 1}", "-o", out / "%04d.png")
        return cls.raw_frames(out / "%04d.png", *size, "-start_number", 0, filters=filters)

    def expect_same(self, frames, expected):
        self.assertEqual(len(frames), len(expected))
        different = [i for i, frame in enumerate(frames) if frame != expected[i]]
        self.assertEqual(str(different), "[]")

    def expect_stars(self, frames):
        self.assertTrue(frames[-1] != self.input[len(frames) - 1], "no stars")


class Ffmpeg(HostTest):
    def by_ffmpeg(self, filters, clip=None, size=(WIDTH, HEIGHT), options=()):
        done = run("ffmpeg", "-v", "error", "-framerate", 25, *options, "-i", clip or self.clip,
                   "-vf", filters, "-fps_mode", "passthrough", "-f",
                   "rawvideo", "-pix_fmt", "rgba", "-", env=self.environment)
        return self.split(done.stdout, *size)

    def filter(self, *parameters):
        return "frei0r=filter_name=brisel:filter_params=" + "|".join(map(str, parameters))

    def test_scenes(self):
        for name, text in SCENES.items():
            with self.subTest(name):
                scene = self.scene(text)
                expected = self.by_brisel(scene)
                self.expect_same(self.by_ffmpeg(self.filter(scene)), expected)
                self.expect_stars(expected)

    def test_presets_and_parameters_by_position(self):
        scene = self.scene('[scene]\npresets = ["sparkler"]\n[params]\n'
                           '"Standard path" = "Circle"\n"Start" = [0.3, 0.6]')
        frames = self.by_ffmpeg(self.filter("", "sparkler", "Circle", 0.3, 0.6))
        self.expect_same(frames, self.by_brisel(scene))

    def test_still_with_alpha(self):
        scene = self.scene('[scene]\nframes = 12\n[params]\n'
                           '"Standard path" = "Contour alpha channel"\n"Size" = 4')
        logo = self.folder / "logo.png"
        run("ffmpeg", "-v", "error", "-i", MEDIA / "logo.png", "-vf", f"scale={WIDTH}:{HEIGHT}", logo)
        expected = self.by_brisel(scene, logo, 12)
        frames = self.by_ffmpeg(self.filter(scene), logo, options=("-loop", 1, "-t", 12 / 25))
        self.expect_same(frames, expected)

    def test_gaps(self):
        scene = self.scene(SCENES["keyframes"])
        expected = self.by_brisel(scene)
        fps25 = self.scene(SCENES["keyframes"].replace("[scene]", "[scene]\nfps = 25"))
        enabled = self.by_ffmpeg(self.filter(fps25) + ":enable='between(n,10,20)'")
        self.expect_same(enabled[10:21], expected[10:21])
        self.expect_same(enabled[:10] + enabled[21:], self.input[:10] + self.input[21:])
        selected = self.by_ffmpeg("select='not(mod(n,7))'," + self.filter(fps25))
        self.expect_same(selected, expected[::7])

    def test_sizes(self):
        """It pads rows of other widths than multiples of 16, and tells no filter."""
        for size, frames in (((336, 187), 20), ((3840, 2160), 3)):
            with self.subTest(size):
                clip = self.pictures(f"clip_{size[0]}", *size, frames)
                scene = self.scene(SCENES["keyframes"])
                self.expect_same(self.by_ffmpeg(self.filter(scene), clip, size),
                                 self.by_brisel(scene, clip, frames, size))

    def test_any_width_with_a_margin(self):
        pad, crop = "pad=ceil(iw/64)*64:ih:-1:-1", "crop=331:ih"
        odd = self.pictures("odd", 331, 187, 20)
        (self.folder / "padded").mkdir()
        padded = self.folder / "padded/%04d.png"
        run("ffmpeg", "-v", "error", "-i", odd, "-vf", pad, padded)
        scene = self.scene(SCENES["layers"])
        expected = self.by_brisel(scene, padded, 20, (331, 187), crop)
        frames = self.by_ffmpeg(f"{pad},{self.filter(scene)},{crop}", odd, (331, 187))
        self.expect_same(frames, expected)

    def test_smaller_than_the_scene(self):
        """As hosts preview: the same picture as the command line's at half the size."""
        scene = self.scene("[scene]\nsize = [1024, 576]\n" + SCENES["keyframes"].replace(
            "[scene]", ""))
        out = self.folder / "half"
        out.mkdir()
        run(BRISEL, "render", scene, "-i", self.clip, "--fps", 25, "--scale", "1/2", "-o",
            out / "%04d.png")
        plain = self.raw_frames(out / "%04d.png", WIDTH, HEIGHT, "-start_number", 0)
        frames = self.by_ffmpeg(self.filter(scene))
        # The command line scales the clip up to the scene's size and down again.
        self.assertEqual(len(frames), len(plain))
        difference = sum(abs(a - b) for a, b in zip(frames[-1], plain[-1])) / len(plain[-1])
        self.assertLess(difference, 1.0)


class Melt(HostTest):
    def by_melt(self, *settings, real_time=-1, clip=None, frames=FRAMES,
                size=(WIDTH, HEIGHT), ttl=1, consumer=()):
        profile = self.folder / "profile"
        profile.write_text(
            f"description=small\nframe_rate_num=25\nframe_rate_den=1\nwidth={size[0]}\n"
            f"height={size[1]}\nprogressive=1\nsample_aspect_num=1\nsample_aspect_den=1\n"
            f"display_aspect_num={size[0]}\ndisplay_aspect_den={size[1]}\ncolorspace=709\n",
            encoding="utf-8")
        out = self.folder / "melt.rgba"
        run("melt", "-silent", "-profile", profile, (clip or self.clip).with_name(".all.png"),
            f"ttl={ttl}", "in=0", f"out={frames - 1}", "-attach-cut", "frei0r.brisel", *settings, "-consumer", f"avformat:{out}",
            "f=rawvideo", "vcodec=rawvideo", "pix_fmt=rgba", "mlt_image_format=rgba", "an=1",
            f"real_time={real_time}", *consumer, env=self.environment)
        return self.split(out.read_bytes(), *size)

    def test_odd_size(self):
        clip = self.pictures("odd", 331, 187, 20)
        scene = self.scene(SCENES["layers"])
        self.expect_same(self.by_melt(f"Scene={scene}", clip=clip, frames=20, size=(331, 187)),
                         self.by_brisel(scene, clip, 20, (331, 187)))

    def test_scenes_on_one_thread_and_on_four(self):
        for name, text in SCENES.items():
            scene = self.scene(text)
            expected = self.by_brisel(scene)
            # What reads the clip takes the clip of now for the frames between.
            for threads in (-1, -4) if name != "clip" else (-1,):
                with self.subTest(name, threads=threads):
                    self.expect_same(self.by_melt(f"Scene={scene}", real_time=threads), expected)

    def test_keyframes_of_the_host(self):
        scene = self.scene('[params]\n"Intensity" = 20\n'
                           '"Size" = [ { frame = 0, value = 7.5 }, { frame = 39, value = 75 } ]')
        frames = self.by_melt("Intensity=0.4", "Size=0=0.05;39=0.5")
        self.expect_same(frames, self.by_brisel(scene))

    def test_a_filter_counts_from_where_it_begins(self):
        expected = self.by_brisel(self.scene('[scene]\npresets = ["fountain"]'))
        out = self.by_melt("Presets=fountain", "Frames per second=25", consumer=("in=20", "out=39"))
        self.expect_same(out, expected[20:])

    def test_a_render_that_begins_at_a_whole_second(self):
        """20 s might be the second frame, in milliseconds, at 50 frames a second."""
        def rendered(first):
            return self.by_melt("Frames per second=25", frames=600, ttl=50,
                                consumer=(f"in={first}", "out=520"))
        before = rendered(499)
        self.assertTrue(before[1] != before[2])
        self.expect_same(rendered(500)[:10], before[1:11])

    def test_metadata(self):
        data = self.folder / "mlt"
        shutil.copytree("/usr/share/mlt-7", data)
        shutil.copy(SHARE / "mlt-7/frei0r/filter_frei0r.brisel.yml", data / "frei0r")
        said = run("melt", "-query", "filter=frei0r.brisel",
                   env={**self.environment, "MLT_DATA": str(data)}).stdout.decode()
        for text in ("identifier: Standard path", "- Whole field", "default: 0.166667"):
            self.assertIn(text, said)


class Gstreamer(HostTest):
    def by_gstreamer(self, *properties, clip=None, frames=FRAMES, size=(WIDTH, HEIGHT)):
        out = self.folder / "gst.rgba"
        run("gst-launch-1.0", "-q", "multifilesrc", f"location={clip or self.clip}", "start-index=1",
            f"stop-index={frames}", "caps=image/png,framerate=25/1", "!", "pngdec", "!",
            "videoconvert", "!", "video/x-raw,format=RGBA", "!", "frei0r-filter-brisel",
            *properties, "!", "filesink", f"location={out}",
            env={**self.environment, "GST_REGISTRY": str(self.folder / "registry")})
        return self.split(out.read_bytes(), *size)

    def test_sizes(self):
        scene = self.scene(SCENES["layers"])
        for size, frames in (((331, 187), 20), ((3840, 2160), 3)):
            with self.subTest(size):
                clip = self.pictures(f"clip_{size[0]}", *size, frames)
                self.expect_same(
                    self.by_gstreamer(f"scene={scene}", clip=clip, frames=frames, size=size),
                    self.by_brisel(scene, clip, frames, size))

    def test_scenes(self):
        for name, text in SCENES.items():
            with self.subTest(name):
                scene = self.scene(text)
                self.expect_same(self.by_gstreamer(f"scene={scene}"), self.by_brisel(scene))

    def test_presets_and_properties(self):
        scene = self.scene('[scene]\npresets = ["comet"]\n[params]\n"Intensity" = 40\n'
                           '"Color of particles" = "#ff8000"\n"Type" = "Type3"')
        frames = self.by_gstreamer("presets=comet", "intensity=0.8", "type=Type3",
                                   "color-of-particles-r=1", "color-of-particles-g=0.50196",
                                   "color-of-particles-b=0")
        self.expect_same(frames, self.by_brisel(scene))


class Kdenlive(HostTest):
    PROJECT = """<?xml version="1.0" encoding="utf-8"?>
<mlt LC_NUMERIC="C" producer="main_bin" version="7.12.0" root="{folder}">
 {consumer}
 <profile description="HD 1080p 25 fps" width="1920" height="1080" frame_rate_num="25"
  frame_rate_den="1" progressive="1" sample_aspect_num="1" sample_aspect_den="1"
  display_aspect_num="16" display_aspect_den="9" colorspace="709"/>
 <producer id="black_track" in="0" out="19"><property name="resource">black</property>
  <property name="mlt_service">color</property><property name="mlt_image_format">rgba</property>
  <property name="kdenlive:playlistid">black_track</property></producer>
 <producer id="clip" in="0" out="19"><property name="resource">{media}/dusk.mp4</property>
  <property name="mlt_service">avformat-novalidate</property><property name="length">100</property>
  <property name="audio_index">-1</property><property name="video_index">0</property>
  <property name="kdenlive:id">2</property><property name="kdenlive:clip_type">2</property>
  <property name="kdenlive:folderid">-1</property></producer>
 <playlist id="main_bin"><property name="kdenlive:docproperties.version">1.04</property>
  <property name="kdenlive:docproperties.profile">atsc_1080p_25</property>
  <property name="xml_retain">1</property><entry in="0" out="19" producer="clip"/></playlist>
 <playlist id="top"><entry in="0" out="19" producer="clip">
  <property name="kdenlive:id">2</property>{effect}</entry></playlist>
 <playlist id="spare"/>
 <tractor id="track" in="0" out="19"><track hide="audio" producer="top"/>
  <track hide="audio" producer="spare"/></tractor>
 <tractor id="all" global_feed="1" in="0" out="19"><track producer="black_track"/>
  <track producer="track"/></tractor>
</mlt>
"""
    EFFECT = """<filter><property name="mlt_service">frei0r.brisel</property>
  <property name="kdenlive_id">brisel.fountain</property>
  <property name="Presets">fountain</property></filter>"""

    def project(self, name, effect="", target=None):
        consumer = target and (f'<consumer mlt_service="avformat" target="{target}" f="rawvideo" '
                               'vcodec="rawvideo" pix_fmt="rgba" mlt_image_format="rgba" an="1" '
                               'real_time="-1" in="0" out="19"/>')
        file = self.folder / name
        file.write_text(self.PROJECT.format(folder=self.folder, media=MEDIA, effect=effect,
                                            consumer=consumer or ""), encoding="utf-8")
        return file

    def render(self, name, effect):
        target = self.folder / f"{name}.rgba"
        run("xvfb-run", "-a", "dbus-run-session", "kdenlive_render", shutil.which("melt"),
            self.project(f"{name}.mlt", effect, target), target, "-pid:1", env=self.environment)
        return target

    def test_a_project_renders(self):
        plain = self.render("plain", "")
        (self.folder / "decoded").mkdir()
        run("ffmpeg", "-v", "error", "-f", "rawvideo", "-pix_fmt", "rgba", "-s", "1920x1080", "-i",
            plain, self.folder / "decoded/%04d.png")
        scene = self.scene('[scene]\npresets = ["fountain"]')
        expected = self.by_brisel(scene, self.folder / "decoded/%04d.png", 20, (1920, 1080))
        with_stars = self.render("stars", self.EFFECT).read_bytes()
        self.expect_same(self.split(with_stars, 1920, 1080), expected)

    def test_it_opens_a_project_with_a_look(self):
        shutil.copytree(SHARE / "kdenlive", self.folder / ".local/share/kdenlive")
        project = self.project("look.kdenlive", self.EFFECT)
        log = (self.folder / "kdenlive.log").open("wb")
        script = f"""
            kdenlive {project} & opened=$!
            for i in $(seq 90); do
              sleep 1
              xwininfo -root -tree | grep -o '"[^"]*Kdenlive"' > {self.folder}/windows
              grep -q look {self.folder}/windows && sleep 5 && break
            done
            xwininfo -root -tree | grep -o '"[^"]*"' > {self.folder}/windows
            kill $opened"""
        with log:
            subprocess.run(["xvfb-run", "-a", "dbus-run-session", "bash", "-c", script],
                           env=self.environment, stdout=log, stderr=log, check=False, timeout=200)
        windows = (self.folder / "windows").read_text(encoding="utf-8")
        self.assertIn('"look / HD 1080p 25 fps — Kdenlive"', windows)
        for trouble in ("Unable", "Problem", "Error", "crash", "missing"):
            self.assertNotIn(trouble, windows)


class Shotcut(HostTest):
    PROJECT = """<?xml version="1.0"?>
<mlt LC_NUMERIC="C" version="7.12.0" producer="clip">
 <profile description="HD 1080p 25 fps" width="1920" height="1080" frame_rate_num="25"
  frame_rate_den="1" progressive="1" sample_aspect_num="1" sample_aspect_den="1"
  display_aspect_num="16" display_aspect_den="9" colorspace="709"/>
 <producer id="clip" in="0" out="99"><property name="length">100</property>
  <property name="resource">{media}/dusk.mp4</property>
  <property name="mlt_service">avformat-novalidate</property>
  <filter in="0" out="99"><property name="mlt_service">frei0r.brisel</property>
   <property name="shotcut:filter">brisel</property>
   <property name="Presets">fountain</property></filter></producer>
</mlt>
"""

    def install(self):
        """A program that looks for its filters beside itself, with ours among them."""
        (self.folder / "bin").mkdir()
        shutil.copy(shutil.which("shotcut"), self.folder / "bin")
        filters = self.folder / "share/shotcut/qml/filters"
        filters.mkdir(parents=True)
        for parent in ("/usr/share/shotcut", "/usr/share/shotcut/qml"):
            for entry in pathlib.Path(parent).iterdir():
                link = self.folder / "share" / entry.relative_to("/usr/share")
                if not link.exists():
                    link.symlink_to(entry)
        for entry in pathlib.Path("/usr/share/shotcut/qml/filters").iterdir():
            if entry.name != "brisel":
                (filters / entry.name).symlink_to(entry)
        shutil.copytree(SHARE / "shotcut/qml/filters/brisel", filters / "brisel")

    def test_it_shows_the_controls(self):
        self.install()
        project = self.folder / "look.mlt"
        project.write_text(self.PROJECT.format(media=MEDIA), encoding="utf-8")
        log = self.folder / "shotcut.log"
        script = f"""
            {self.folder}/bin/shotcut --noupgrade {project} & opened=$!
            for i in $(seq 90); do
              sleep 1
              xwininfo -root -tree | grep -q look.mlt && sleep 15 && break
            done
            kill $opened"""
        with log.open("wb") as output:
            subprocess.run(["xvfb-run", "-a", "dbus-run-session", "bash", "-c", script],
                           env=self.environment, stdout=output, stderr=output, check=False,
                           timeout=200)
        said = log.read_text(encoding="utf-8", errors="replace").splitlines()
        self.assertTrue([line for line in said if line.endswith('added filter "Brisel" ')])
        ours = [line for line in said if "filters/brisel/" in line]
        # As it closes, it loses what tells dialogs their modality, its own and that of the controls.
        closing = [line for line in ours if "'dialogModality' of null" in line]
        self.assertTrue(closing, "there were no controls")
        self.assertEqual(ours, closing)


if __name__ == "__main__":
    unittest.main(argv=[sys.argv[0], *sys.argv[5:]])
