"""A picture computed in floating point, and how it becomes a bitmap file."""
import math
import struct

import cairo

WHITE = (1.0, 1.0, 1.0)
# A 4 x 4 Bayer matrix: ordered dither hides the steps of dark gradients.
DITHER = (0, 8, 2, 10, 12, 4, 14, 6, 3, 11, 1, 9, 15, 7, 13, 5)


def mix(a, b, t):
    return tuple(p + (q - p) * t for p, q in zip(a, b))


def ramp(colors, t):
    """The color at t (0 .. 1) of evenly spaced ones."""
    at = min(max(t, 0.0), 1.0) * (len(colors) - 1)
    i = min(int(at), len(colors) - 2)
    return mix(colors[i], colors[i + 1], at - i)


class Picture:
    """Rows of red, green and blue from 0 to 1, the top row first.

    Shapes are cairo's coverage masks; light is screened over them, so the order of lights does not
    matter and bright places run to white.
    """

    def __init__(self, size, color_at):
        self.width, self.height = size
        self.rows = [[color_at(x + 0.5, y + 0.5) for x in range(self.width)]
                     for y in range(self.height)]

    def fill(self, draw, color_at, opacity=1.0):
        """Lays a color over the picture where `draw` draws on a cairo context."""
        mask = cairo.ImageSurface(cairo.FORMAT_A8, self.width, self.height)
        context = cairo.Context(mask)
        context.set_antialias(cairo.ANTIALIAS_BEST)
        draw(context)
        mask.flush()
        coverage, stride = mask.get_data(), mask.get_stride()
        for y, row in enumerate(self.rows):
            for x in range(self.width):
                alpha = coverage[y * stride + x] / 255 * opacity
                if alpha:
                    row[x] = mix(row[x], color_at(x + 0.5, y + 0.5), alpha)

    def light(self, x0, y0, reach, color, strength_at):
        """Screens light over the disc of radius `reach`, at whose rim it has faded to nothing."""
        for y in range(max(0, int(y0 - reach)), min(self.height, int(y0 + reach) + 1)):
            for x in range(max(0, int(x0 - reach)), min(self.width, int(x0 + reach) + 1)):
                total = 0.0
                for sub in range(9):  # cores are smaller than a pixel
                    dx = x + (sub % 3 + 0.5) / 3 - x0
                    dy = y + (sub // 3 + 0.5) / 3 - y0
                    rim = 1 - (dx * dx + dy * dy) / (reach * reach)
                    if rim > 0:
                        total += strength_at(dx, dy) * rim * rim / 9
                if total:
                    self.rows[y][x] = tuple(
                        1 - (1 - c) * math.exp(-total * l) for c, l in zip(self.rows[y][x], color))

    def glow(self, x, y, reach, color, strength):
        self.light(x, y, reach, color, lambda dx, dy: strength * math.exp(
            -2 * (dx * dx + dy * dy) / (reach * reach)))

    def star(self, x, y, size, color, strength=1.0, rays=1.0):
        """A white-hot core in a colored halo with four rays, `size` pixels long."""
        def halo(dx, dy):
            r = math.hypot(dx, dy) / size
            light = 0.55 * math.exp(-7 * r)
            for along, across in ((dx, dy), (dy, dx)):
                length = abs(along) / size
                width = 0.055 * size * (1 - length) + 0.25
                light += rays * 1.1 * math.exp(-3.2 * length - (across / width) ** 2)
            return strength * light

        self.light(x, y, size, color, halo)
        self.light(x, y, size * 0.5, WHITE,
                   lambda dx, dy: strength * 2.4 * math.exp(-math.hypot(dx, dy) / (0.09 * size)))

    def save(self, path, part=None):
        """Writes the picture, or a rectangle of it, as an uncompressed 24-bit BMP file."""
        left, top, width, height = part or (0, 0, self.width, self.height)
        data = bytearray()
        for y in reversed(range(top, top + height)):
            for x in range(left, left + width):
                threshold = (DITHER[y % 4 * 4 + x % 4] + 0.5) / 16
                data += bytes(min(255, int(c * 255 + threshold))
                              for c in reversed(self.rows[y][x]))
            data += bytes(width % 4)  # rows end on a multiple of four bytes
        header = struct.pack("<2sIHHI", b"BM", 54 + len(data), 0, 0, 54)
        header += struct.pack("<IiiHHIIiiII", 40, width, height, 1, 24, 0, len(data), 2835, 2835,
                              0, 0)
        path.write_bytes(header + data)
