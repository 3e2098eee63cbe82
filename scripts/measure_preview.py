#!/usr/bin/python3
"""Measures how quickly the preview window answers, by real key events on a display of its own.

usage: measure_preview.py [BUILD_FOLDER]      default: build/release

Starts Xvfb and brisel-preview, presses keys through XTest, and reads when pictures were shown from
the trace that the program writes. Prints one line per figure, and whether it is within its bound;
fails when one is not. Needs what scripts/install_dependencies.sh desk installs.
"""

import contextlib
import os
import pathlib
import statistics
import subprocess
import sys
import tempfile
import time

ROOT = pathlib.Path(__file__).resolve().parent.parent
PRESSES = 40
SCRUBBED = 120
LAST = 999  # frame of the scenes


class Window:
    """brisel-preview on a display, with a scene."""

    def __init__(self, program, display, folder, scene_text):
        scene = folder / "scene.toml"
        scene.write_text(scene_text, encoding="utf-8")
        self.trace = folder / "trace"
        self.trace.unlink(missing_ok=True)
        self.read = 0  # bytes of it
        self.pictures = []
        environment = {**os.environ, "DISPLAY": display, "BRISEL_PREVIEW_TRACE": str(self.trace),
                       "XDG_CONFIG_HOME": str(folder), "XDG_DATA_HOME": str(folder)}
        self.started = time.monotonic_ns()
        self.process = subprocess.Popen([program, scene], env=environment)
        self.keys = subprocess.Popen(["xdotool", "-"], env={**os.environ, "DISPLAY": display},
                                     stdin=subprocess.PIPE, text=True, bufsize=1)

    def take_focus(self):
        """As a window manager gives it, of which there is none."""
        self.keys.stdin.write("search --sync --onlyvisible --name Brisel windowfocus --sync\n")
        self.settle()

    def close(self):
        self.keys.stdin.close()
        self.keys.wait()
        self.process.kill()
        self.process.wait()

    def shown(self):
        """Each picture that was shown: nanoseconds, frame, request, whether it is the newest."""
        with contextlib.suppress(FileNotFoundError), self.trace.open(encoding="utf-8") as trace:
            trace.seek(self.read)
            new = trace.read()
            new = new[:new.rfind("\n") + 1]
            self.read += len(new)
            self.pictures += [tuple(map(int, line.split())) for line in new.splitlines()]
        return self.pictures

    def wait(self, is_meant, after=0, seconds=30):
        """The first picture that is meant; the trace tells when, so that it is looked at seldom."""
        end = time.monotonic() + seconds
        while time.monotonic() < end:
            for picture in self.shown()[after:]:
                if is_meant(picture):
                    return picture
            if self.process.poll() is not None:
                sys.exit(f"measure_preview.py: brisel-preview ended with {self.process.returncode}")
            time.sleep(0.003)
        sys.exit("measure_preview.py: no picture came")

    def press(self, key):
        pressed = time.monotonic_ns()
        self.keys.stdin.write(f"key {key}\n")
        return pressed

    def settle(self):
        """Until nothing is asked for any more."""
        last = None
        while last != (pictures := len(self.shown())):
            last = pictures
            time.sleep(0.3)

    def go_to(self, frame):
        if frame == LAST:
            self.press("End")  # which handles do not need
        for _ in range(0 if frame == LAST else frame // 10):
            self.press("shift+Right")
        self.wait(lambda picture: picture[1] == frame and picture[3])
        self.settle()

    def answer_times(self):
        """Milliseconds from a key that moves a point to the picture that shows it."""
        self.press("Tab")
        times = []
        for _ in range(PRESSES):
            count = len(self.shown())
            before = self.pictures[-1][2]
            pressed = self.press("Down")  # ever on: a state that was shown before is known
            picture = self.wait(lambda shown, old=before: shown[2] > old and shown[3], count)
            times.append((picture[0] - pressed) / 1e6)
            time.sleep(0.02)
        return times

    def processor_seconds(self):
        fields = pathlib.Path(f"/proc/{self.process.pid}/stat").read_text().rsplit(")", 1)[1].split()
        return (int(fields[11]) + int(fields[12])) / os.sysconf("SC_CLK_TCK")


@contextlib.contextmanager
def display():
    read, write = os.pipe()
    server = subprocess.Popen(["Xvfb", "-displayfd", str(write), "-screen", "0", "1920x1200x24"],
                              pass_fds=[write], stderr=subprocess.DEVNULL)
    os.close(write)
    try:
        yield f":{os.read(read, 16).decode().strip()}"
    finally:
        server.terminate()
        server.wait()


def main():
    if len(sys.argv) > 2 or sys.argv[1:] == ["--help"]:
        print(__doc__)
        sys.exit(0 if sys.argv[1:] == ["--help"] else 2)
    build = pathlib.Path(sys.argv[1]) if len(sys.argv) == 2 else ROOT / "build/release"
    program = build / "bin/brisel-preview"
    missed = []

    def tell(what, value, unit, bound, most=True):
        holds = value <= bound if most else value >= bound
        print(f"{what:46} {value:8.1f} {unit:10} {'at most' if most else 'at least'} {bound:g}"
              f"{'' if holds else ': MISSED'}", flush=True)
        if not holds:
            missed.append(what)

    with display() as screen, tempfile.TemporaryDirectory() as name:
        folder = pathlib.Path(name)

        def window(size):
            return contextlib.closing(Window(program, screen, folder,
                                             f"[scene]\nsize = {size}\nframes = 1000\n"))

        with window([1280, 720]) as opened:
            first = opened.wait(lambda picture: True)
            tell("start to first picture", (first[0] - opened.started) / 1e6, "ms", 500)
            opened.take_focus()
            for frame, bound in ((300, 20), (LAST, 30)):
                opened.go_to(frame)
                tell(f"change to picture, 1280x720, frame {frame}, median",
                     statistics.median(opened.answer_times()), "ms", bound)
            opened.settle()
            before = opened.processor_seconds()
            time.sleep(3)
            tell("idle, processor", 100 * (opened.processor_seconds() - before) / 3, "%", 0)
        with window([1920, 1080]) as opened:
            opened.wait(lambda picture: True)
            opened.take_focus()
            opened.go_to(300)
            count = len(opened.shown())
            begin = time.monotonic()
            for _ in range(SCRUBBED):
                opened.press("Left")
                time.sleep(1 / 60)
            opened.wait(lambda picture: picture[1] == 300 - SCRUBBED)
            seconds = time.monotonic() - begin
            frames = {picture[1] for picture in opened.shown()[count:]}
            tell("scrubbing, 1920x1080", len(frames) / seconds, "pictures/s", 30, most=False)
    sys.exit(1 if missed else 0)


if __name__ == "__main__":
    main()
