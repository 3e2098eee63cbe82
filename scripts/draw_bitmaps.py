#!/usr/bin/python3
"""Draws the bitmaps of the effect's own controls into src/plugin/resources/bitmaps.

The logo and the documentation button are cut out of the header they lie on, so no edge shows
around them. Needs Debian's python3-cairo and fonts-dejavu-core; a second run writes the same bytes.
"""
import copy
import math
import random
from pathlib import Path

import cairo

from picture import WHITE, Picture, mix, ramp

FOLDER = Path(__file__).resolve().parent.parent / "src/plugin/resources/bitmaps"
FONT = "DejaVu Sans"

HEADER = (445, 100)
LOGO = (2, 2, 52, 55)  # left, top, width and height on the header
BUTTON = (48, 61, 41, 36)
ARROW = (16, 50)
TEXTURE = (30, 30)

CREAM = (1.0, 0.95, 0.84)
GOLD = (1.0, 0.78, 0.36)
AMBER = (1.0, 0.52, 0.16)
ROSE = (0.86, 0.36, 0.56)
VIOLET = (0.48, 0.38, 0.98)
INDIGO = (0.16, 0.10, 0.36)


def lettering(text, x, baseline, size, spacing):
    """Draws a word's outlines, unhinted, with extra space between letters; returns the drawing."""
    def draw(context):
        options = cairo.FontOptions()
        options.set_hint_style(cairo.HINT_STYLE_NONE)
        options.set_hint_metrics(cairo.HINT_METRICS_OFF)
        context.set_font_options(options)
        context.select_font_face(FONT, cairo.FONT_SLANT_NORMAL, cairo.FONT_WEIGHT_NORMAL)
        context.set_font_size(size)
        at = x
        for letter in text:
            context.move_to(at, baseline)
            context.text_path(letter)
            at += context.text_extents(letter).x_advance + spacing
        context.fill()

    return draw


def trail_at(t):
    """The path of the comet over the header, from its tail (0) to its head (1)."""
    points = ((92, 90), (230, 97), (352, 82), (404, 31))
    weights = ((1 - t) ** 3, 3 * t * (1 - t) ** 2, 3 * t * t * (1 - t), t ** 3)
    return tuple(sum(w * p[axis] for w, p in zip(weights, points)) for axis in (0, 1))


def night(x, y):
    sky = mix((0.070, 0.070, 0.125), (0.125, 0.085, 0.190), y / HEADER[1])
    return mix(sky, (0.060, 0.060, 0.095), max(0.0, 1 - x / 170))


def draw_header():
    chance = random.Random(4)
    header = Picture(HEADER, night)
    header.glow(395, 38, 120, mix(VIOLET, ROSE, 0.35), 0.38)
    header.glow(300, 90, 120, VIOLET, 0.2)
    header.glow(120, 110, 100, ROSE, 0.08)
    for _ in range(70):  # distant stars
        header.star(chance.uniform(2, 443), chance.uniform(2, 98), chance.uniform(1.5, 3.0),
                    ramp((VIOLET, WHITE, GOLD), chance.random()), chance.uniform(0.15, 0.6), 0)
    hues = (VIOLET, ROSE, AMBER, GOLD)
    for i in range(160):  # the comet's smooth tail
        t = (i + 0.5) / 160
        x, y = trail_at(t)
        header.glow(x, y, 5 + 11 * t, ramp(hues, t), 0.13 * t)
    for _ in range(85):  # the sparks it sheds
        t = chance.random() ** 0.75
        x, y = trail_at(t)
        spread = 3 + 11 * (1 - t) ** 0.5
        size = chance.uniform(2.5, 6) if chance.random() < 0.8 else chance.uniform(7, 12)
        header.star(x + chance.gauss(0, spread * 0.6), y + chance.gauss(0, spread * 0.45),
                    size * (0.55 + 0.6 * t), ramp(hues, t + chance.uniform(-0.12, 0.12)),
                    chance.uniform(0.45, 1.0) * (0.45 + 0.55 * t), 0.8)
    for t, across, size in ((0.18, -2, 9), (0.36, -6, 11), (0.5, 4, 13), (0.63, -7, 12),
                            (0.74, 7, 15), (0.84, -9, 14), (0.93, 9, 12)):
        x, y = trail_at(t)
        header.star(x, y + across, size, ramp(hues, t), 1.1)
    x, y = trail_at(1)
    header.glow(x, y, 54, AMBER, 0.5)
    header.glow(x, y, 26, GOLD, 0.7)
    header.star(x, y, 40, GOLD, 1.3)
    return header


def letter_header(header):
    title = lettering("Br\u0131sel", 103, 52, 44, 1.5)
    header.fill(title, lambda x, y: ramp((WHITE, CREAM, GOLD), (y - 20) / 34))
    header.star(160.9, 22.5, 13, GOLD, 1.2)  # the dot of the i
    header.fill(lettering("STAR PARTICLES", 106, 72, 10, 2.9),
                lambda x, y: (0.72, 0.70, 0.86))


def star_outline(context, x, y, across, up, waist):
    """A four-pointed star with hollow sides."""
    context.move_to(x, y - up)
    for (px, py) in ((across, 0), (0, up), (-across, 0), (0, -up)):
        hx, hy = context.get_current_point()
        middle = (x + (hx - x + px) * waist, y + (hy - y + py) * waist)
        context.curve_to(*middle, *middle, x + px, y + py)
    context.close_path()


def draw_logo(header, hover):
    left, top, width, height = LOGO
    x, y = left + 25, top + 29
    header.glow(x, y, 25, GOLD if hover else AMBER, 1.5 if hover else 0.6)

    def orbit(context):
        context.translate(x, y)
        context.rotate(-0.55)
        context.scale(1, 0.42)
        context.arc(0, 0, 22, 0.62, 5.65)
        context.identity_matrix()
        context.set_line_width(1.5)
        context.stroke()

    header.fill(orbit, lambda px, py: ramp((VIOLET, ROSE, GOLD), (px - left) / width), 0.95)

    def body(context):
        star_outline(context, x, y, 17, 23, 0.13)
        context.fill()

    def facets(context):
        for sign in (-1, 1):
            star_outline(context, x, y, 17, 23, 0.13)
            context.clip()
            context.move_to(x, y)
            context.line_to(x + sign * 40, y)
            context.line_to(x, y + sign * 40)
            context.fill()
            context.reset_clip()

    header.fill(body, lambda px, py: ramp((CREAM, GOLD, AMBER), (py - top - 8) / 40))
    header.fill(facets, lambda px, py: WHITE if hover else CREAM, 0.55)
    header.star(x, y, 13, CREAM, 1.0 if hover else 0.6, 0.4)
    header.star(left + 41.5, top + 12.5, 9, GOLD if hover else AMBER, 1.3)


def draw_button(header, hover):
    left, top, width, height = BUTTON
    x, y = left + width / 2, top + height / 2

    def plate(context, inset):
        radius = 7 - inset
        for i, (cx, cy) in enumerate(((left + width - 8.5, top + 8.5),
                                      (left + width - 8.5, top + height - 8.5),
                                      (left + 8.5, top + height - 8.5), (left + 8.5, top + 8.5))):
            context.arc(cx, cy, radius, (i - 1) * math.pi / 2, i * math.pi / 2)
        context.close_path()

    def face(context):
        plate(context, 0)
        context.fill()

    def rim(context):
        plate(context, 0.5)
        context.set_line_width(1)
        context.stroke()

    high, low = ((GOLD, AMBER) if hover else
                 ((0.34, 0.32, 0.50), (0.21, 0.19, 0.34)))
    header.fill(face, lambda px, py: mix(high, low, (py - top) / height))
    header.fill(rim, lambda px, py: mix(CREAM, GOLD, (py - top) / height) if hover else
                mix((0.56, 0.53, 0.74), (0.36, 0.33, 0.54), (py - top) / height))

    def page(context, side):
        context.move_to(x, y - 6.5)
        context.curve_to(x + side * 3, y - 9.5, x + side * 8, y - 9.5, x + side * 12, y - 8)
        context.line_to(x + side * 12, y + 6.5)
        context.curve_to(x + side * 8, y + 5, x + side * 3, y + 5, x, y + 8)
        context.close_path()

    def book(context):
        for side in (-1, 1):
            page(context, side)
        context.fill()

    def print_lines(context):
        context.set_line_width(1)
        context.move_to(x, y - 6)
        context.line_to(x, y + 7.5)
        for side in (-1, 1):
            for line in range(3):
                context.move_to(x + side * 3, y - 4.5 + 3 * line)
                context.line_to(x + side * 9.5, y - 4.5 + 3 * line)
        context.stroke()

    header.fill(book, lambda px, py: WHITE if hover else (0.87, 0.86, 0.94))
    header.fill(print_lines, lambda px, py: (0.62, 0.30, 0.06) if hover else (0.33, 0.31, 0.48))


def draw_arrow(name, background, ink, light, pointing):
    """One point of a hollow-sided star, as the logo's, with its light where the star would be."""
    arrow = Picture(ARROW, lambda x, y: background)

    def at(across, down):
        return 8 + pointing * across, 25 + down

    def point(context):
        context.move_to(*at(-6, -17))
        for middle, end in (((-2, -5), (7, 0)), ((-2, 5), (-6, 17)), ((-3, 0), (-6, -17))):
            context.curve_to(*at(*middle), *at(*middle), *at(*end))
        context.fill()

    arrow.fill(point, lambda x, y: mix(ink, light, max(0.0, 1 - math.hypot(x - 8, y - 25) / 15)))
    arrow.save(FOLDER / name)


def draw_texture():
    chance = random.Random(30)
    texture = Picture(TEXTURE, lambda x, y: (chance.uniform(0.0, 0.10),) * 3)
    texture.glow(15, 15, 15, WHITE, 0.5)
    for _ in range(26):
        angle, r = chance.uniform(0, math.tau), 12 * chance.random() ** 0.7
        texture.star(15 + r * math.cos(angle), 15 + r * math.sin(angle), 3, WHITE,
                     chance.uniform(0.2, 0.6), 0)
    texture.star(15, 15, 15, WHITE)
    texture.save(FOLDER / "grey_texture.bmp")


def main():
    banner = draw_header()
    letter_header(banner)
    banner.save(FOLDER / "banner.bmp")
    for suffix, hover in (("", False), ("_hover", True)):
        header = copy.deepcopy(banner)
        draw_logo(header, hover)
        draw_button(header, hover)
        header.save(FOLDER / f"logo{suffix}.bmp", LOGO)
        header.save(FOLDER / f"documentation{suffix}.bmp", BUTTON)
    for side, pointing in (("left", -1), ("right", 1)):
        draw_arrow(f"arrow_{side}.bmp", (1.0, 1.0, 64 / 255), INDIGO, VIOLET, pointing)
        draw_arrow(f"arrow_{side}_pressed.bmp", (0.0, 210 / 255, 1.0), INDIGO, CREAM, pointing)
        draw_arrow(f"arrow_{side}_disabled.bmp", (1.0, 192 / 255, 32 / 255),
                   *(mix(ink, GOLD, 0.35) for ink in (INDIGO, VIOLET)), pointing)
    draw_texture()


if __name__ == "__main__":
    main()
