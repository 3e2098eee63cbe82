"""Pictures of the manual: rendered by the effect, returned as data URIs."""

import base64
import itertools
import json
import pathlib
import shutil
import subprocess
import tomllib

MODULE = "VellixDrizzen_64.AEX"

# Night sky, a little lighter in the middle: base and rise of red, green and blue.
SKY = {"r": (7, 21), "g": (10, 28), "b": (24, 60)}
FALLOFF = "max(0,1-1.7*hypot(X/W-0.5,Y/H-0.5))"


class Pictures:
    def __init__(self, brisel, root, scratch):
        self.brisel = brisel
        self.root = root
        self.scratch = pathlib.Path(scratch)
        self.numbers = itertools.count()
        # The module finds its presets beside itself.
        self.module = self.scratch / MODULE
        shutil.copy(brisel.parent / MODULE, self.module)
        shutil.copytree(root / "library/Corvane", self.scratch / "Corvane")

    def scene(self, scene, frame=0, settings=None, source=None):
        """One frame of a scene over the backdrop, or over `source`, a path in the repository."""
        png = self._new_path(".png")
        options = []
        for label, value in (settings or {}).items():
            options += ["--set", f"{label}={setting_text(value)}"]
        source = self._input(scene, source)
        self._render(scene, "-i", source, frame, png, options)
        return self._webp(png)

    def example(self, scene, frame, width):
        """One frame of a complete scene, reduced, over black where it is transparent."""
        png = self._new_path(".png")
        self._render(scene, None, None, frame, png, [])
        return self._webp(png, f"scale={width}:-2:flags=area,")

    def panel(self, height):
        """The top of the effect controls, with the presets."""
        png = self._new_path(".png")
        subprocess.run([self.brisel, "panel", "--module", self.module, "-o", png], check=True)
        webp = self._new_path(".webp")
        self._ffmpeg("-i", png, "-vf", f"crop=iw:{height}:0:0", "-quality", "80", webp)
        return data_uri("image/webp", webp)

    def thumbnail(self, path):
        webp = self._new_path(".webp")
        # A bitmap of this size is not always recognized as one.
        self._ffmpeg("-f", "image2", "-c:v", "bmp", "-i", path, "-lossless", "1", webp)
        return data_uri("image/webp", webp)

    def _input(self, scene, source):
        """The source, cut to the scene's proportions, or the backdrop in its size."""
        with open(scene, "rb") as file:
            width, height = tomllib.load(file)["scene"]["size"]
        path = self.scratch / f"{pathlib.Path(source or 'backdrop').stem}{width}x{height}.png"
        if not path.is_file() and source:
            fit = f"scale={width}:{height}:force_original_aspect_ratio=increase,crop={width}:{height}"
            self._ffmpeg("-i", self.root / source, "-vf", fit, "-frames:v", "1", path)
        elif not path.is_file():
            sky = ":".join(f"{c}='{base}+{rise}*{FALLOFF}'" for c, (base, rise) in SKY.items())
            self._ffmpeg("-f", "lavfi", "-i", f"nullsrc=s={width}x{height},format=gbrp,geq={sky}",
                         "-frames:v", "1", path)
        return path

    def _render(self, scene, option, source, frame, png, options):
        command = [self.brisel, "render", scene, "-o", png, "--frames", f"{frame}-{frame}",
                   "--module", self.module]
        if option:
            command += [option, source]
        subprocess.run(command + options, check=True, stderr=subprocess.DEVNULL)

    def _webp(self, png, reduction=""):
        webp = self._new_path(".webp")
        self._ffmpeg("-i", png, "-filter_complex",
                     f"{reduction}split[a][b];[a]format=rgb24,lutrgb=r=0:g=0:b=0[black];"
                     "[black][b]overlay=format=rgb,format=yuv420p", "-quality", "68", webp)
        return data_uri("image/webp", webp)

    def _ffmpeg(self, *arguments):
        subprocess.run(["ffmpeg", "-v", "error", "-y", *arguments], check=True)

    def _new_path(self, suffix):
        return self.scratch / f"{next(self.numbers)}{suffix}"


def setting_text(value):
    """A value as --set takes it."""
    if isinstance(value, list):
        return ",".join(json.dumps(part) for part in value)
    return value if isinstance(value, str) else json.dumps(value)


def data_uri(kind, path):
    return f"data:{kind};base64,{base64.b64encode(path.read_bytes()).decode()}"
