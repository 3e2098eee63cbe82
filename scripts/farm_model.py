#!/usr/bin/python3
"""Measures scenes by `brisel chunks` and calculates how a farm renders them. For measure_farm.sh.

A chunk costs its machine: the scheduler's and the program's start, the steps up to its first frame,
its frames. Chunks go to machines as these come free, in order (list scheduling). Frames are written to
a disk that all machines share, which takes no more than so many bytes a second; a clip is joined by
one machine, which reads and writes all of it once more.

usage: farm_model.py BRISEL
"""

import heapq
import os
import pathlib
import re
import subprocess
import sys
import tempfile
import time

BRISEL = str(pathlib.Path(sys.argv[1]).resolve())
START_OF_TASK = 1.0   # seconds from a free machine to a running program; Slurm takes 0.5 to 2
SHARED_DISK = 2.5e9   # bytes a second, all machines together: a link of 25 Gbit/s
JOIN_DISK = 1.0e9     # bytes a second, read and written by one machine
MACHINES = (10, 100, 1000)
FRAMES = (1_000, 100_000)

COMMON = "\"Mix with original\" = \"Add\"\n"
KINDS = {  # all at 1920x1080, 8 bits
    "defaults, 300 stars": ("", COMMON),
    "500 glows, halo, blink": ("", COMMON + """"Maximum number of stars" = 500
"Intensity" = 100
"Type" = "Type glow1"
"Size" = 25
"Type of halo" = "Normal"
"Type of blink" = "Ring"
"Time life" = 100
"""),
    "10,000 small glows": ("", COMMON + """"Standard path" = "Whole field"
"Maximum number of stars" = 10000
"Intensity" = 1000
"Type" = "Type glow1"
"Size" = 1
"Time life" = 100
"""),
    "source as raster mask": ("clip.mp4", COMMON + '"Standard path" = "Source as raster mask"\n'),
    "contour of alpha": ("disc.mov", COMMON + '"Standard path" = "Contour alpha channel"\n'),
}


def run(*command, **options):
    return subprocess.run(command, check=True, capture_output=True, text=True, **options)


def make_inputs():
    """A thousand moving pictures, one clip in luma and chroma and one with alpha."""
    encode = ("ffmpeg", "-v", "error", "-y", "-f", "lavfi", "-i")
    run(*encode, "testsrc2=s=1920x1080:r=25:d=2", "-c:v", "libx264", "-preset", "ultrafast",
        "-pix_fmt", "yuv420p", "short.mp4")
    run(*encode, "color=white:s=1920x1080:r=25:d=2,format=rgba,geq=r=255:g=255:b=255:"
        "a='255*lt(hypot(X-960-400*sin(T),Y-540),300)'", "-c:v", "qtrle", "short.mov")
    for short, clip in (("short.mp4", "clip.mp4"), ("short.mov", "disc.mov")):
        run("ffmpeg", "-v", "error", "-y", "-stream_loop", "19", "-i", short, "-c", "copy", clip)


def write_scene(name, frames, clip, parameters):
    source = f'input = "{clip}"\n' if clip else ""
    pathlib.Path(name).write_text(
        f"[scene]\nsize = [1920, 1080]\nframes = {frames}\n{source}[params]\n{parameters}")


class Costs:
    """Seconds: of a start, a step and a frame that is drawn and written; bytes of a frame."""

    def __init__(self, scene):
        told = run(BRISEL, "chunks", scene, "-n", "1", "--jobs", "1", "-o", "x_%06d.png").stderr
        numbers = re.search(r"measured ([\d.]+) s to start, ([\d.]+) ms a step", told)
        self.start, self.step = float(numbers[1]), float(numbers[2]) / 1000
        total = float(re.search(r"all in one go ([\d.]+) s", told)[1])
        self.frame = (total - self.start) / FRAMES[0]
        run(BRISEL, "render", scene, "--frames", "100-103", "-o", "b_%03d.png")
        self.bytes = sum(path.stat().st_size for path in pathlib.Path().glob("b_*.png")) / 4
        for path in pathlib.Path().glob("b_*.png"):
            path.unlink()

    def chunk(self, first, count):
        return START_OF_TASK + self.start + self.step * first + self.frame * count


def chunk_seconds(costs, frames, count):
    """Of so many chunks at most, each as long as the least bound allows for which they suffice."""
    low, high = 0.0, costs.chunk(0, frames)
    best = [high]
    for _ in range(50):
        bound = (low + high) / 2
        seconds, first = [], 0
        while first < frames and len(seconds) <= count:
            fits = int((bound - costs.chunk(first, 0)) / costs.frame)
            size = max(1, min(fits, frames - first))
            seconds.append(costs.chunk(first, size))
            first += size
        if first >= frames and len(seconds) <= count and max(seconds) <= bound:
            high, best = bound, seconds
        else:
            low = bound
    return best


def scheduled(seconds, machines):
    free = [0.0] * machines
    for chunk in seconds:
        heapq.heappush(free, heapq.heappop(free) + chunk)
    return max(free)


def speed_up(costs, frames, machines):
    """Of numbered pictures, and of a lossless clip of the same size that is joined."""
    alone = costs.start + costs.frame * frames
    makespan = min(scheduled(chunk_seconds(costs, frames, machines * share), machines)
                   for share in (1, 2, 4))
    written = frames * costs.bytes
    pictures = max(makespan, written / SHARED_DISK)
    clip = pictures + START_OF_TASK + written / JOIN_DISK
    return alone / pictures, alone / clip


def measure_two_processes():
    """One scene by one process and by two, one thread each: predicted and measured."""
    clip, parameters = KINDS["defaults, 300 stars"]
    write_scene("two.toml", 120, clip, parameters)
    start = time.monotonic()
    run(BRISEL, "render", "two.toml", "--jobs", "1", "-o", "one_%03d.png")
    one = time.monotonic() - start
    commands = run(BRISEL, "chunks", "two.toml", "-n", "2", "--jobs", "1", "-o", "two_%03d.png")
    start = time.monotonic()
    running = [subprocess.Popen(["sh", "-c", command], stderr=subprocess.DEVNULL)
               for command in commands.stdout.splitlines()]
    ends = []
    for process in running:
        process.wait()
        ends.append(time.monotonic() - start)
    two = time.monotonic() - start
    told = re.search(r"dearest chunk takes about ([\d.]+) s, all in one go ([\d.]+) s",
                     commands.stderr)
    print(f"\n120 frames of the defaults: {one:.1f} s by one process ({told[2]} s predicted), "
          f"{two:.1f} s by two ({told[1]} s predicted), {one / two:.2f} times as quick")


def main():
    with tempfile.TemporaryDirectory(prefix="brisel-farm-") as folder:
        os.chdir(folder)
        make_inputs()
        print(f"\n{'One thread, 1920x1080, 8-bit PNG':34}{'step, ms':>9}{'frame, ms':>11}"
              f"{'ratio':>8}{'MB':>7}{'MB/s':>7}")
        measured = {}
        for kind, (clip, parameters) in KINDS.items():
            write_scene("kind.toml", FRAMES[0], clip, parameters)
            costs = measured[kind] = Costs("kind.toml")
            print(f"{kind:34}{1000 * costs.step:9.3f}{1000 * costs.frame:11.1f}"
                  f"{costs.frame / costs.step:8.0f}{costs.bytes / 1e6:7.2f}"
                  f"{costs.bytes / 1e6 / costs.frame:7.0f}")
        print(f"\nSpeed-up (pictures; clip) when a task takes {START_OF_TASK:g} s to start, the shared "
              f"disk {SHARED_DISK / 1e9:g} GB/s\nand joining {JOIN_DISK / 1e9:g} GB/s:")
        print(f"{'frames':26}" + "".join(f"{frames:>14,}" for frames in FRAMES for _ in MACHINES))
        print(f"{'machines':26}" + "".join(f"{machines:>14,}" for _ in FRAMES
                                           for machines in MACHINES))
        for kind, costs in measured.items():
            cells = (speed_up(costs, frames, machines)
                     for frames in FRAMES for machines in MACHINES)
            print(f"{kind:26}" + "".join(f"{f'{a:.1f}; {b:.1f}':>14}" for a, b in cells))
        measure_two_processes()
        os.chdir("/")


if __name__ == "__main__":
    main()
