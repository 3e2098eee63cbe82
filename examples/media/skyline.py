"""Prints the plate of fireworks.toml as SVG: a city at night on a river that mirrors it."""
import random

random.seed(11)
WIDTH, SHORE = 1920, 792
WARM = ["#ffcf87", "#ffb65c", "#ffe2b0", "#ff9d4a"]
COOL = ["#bfe0ff", "#8fd0ff", "#e8f4ff"]


def rect(x, y, width, height, fill, opacity=1.0):
    return (f'<rect x="{x:.0f}" y="{y:.0f}" width="{width:.1f}" height="{height:.1f}" '
            f'fill="{fill}" opacity="{opacity:.2f}"/>')


def lamp(x, y, radius, fill, opacity=1.0):
    return f'<circle cx="{x:.0f}" cy="{y:.0f}" r="{radius:.1f}" fill="{fill}" opacity="{opacity:.2f}"/>'


def windows(x, top, width, step, lit, size):
    """The lit windows of one building; some floors are busy, as in offices."""
    for y in range(int(top) + 10, SHORE - 8, step):
        share = lit * 2.2 if random.random() < 0.25 else lit
        for column in range(int(x) + 6, int(x + width) - 5, step - 2):
            if random.random() < share:
                color = random.choice(COOL if random.random() < 0.2 else WARM)
                yield rect(column, y, size, size * 1.35, color, random.uniform(0.35, 1))


def row(low, high, narrow, wide, gap, color, step, lit, size):
    """A row of buildings from edge to edge, tallest a little to the right of the center."""
    x = -20.0
    while x < WIDTH:
        width = random.uniform(narrow, wide)
        middle = x + width / 2
        height = random.uniform(low, high) * (0.45 + 0.75 * max(0.0, 1 - abs(middle - 1120) / 900))
        top = SHORE - height
        yield rect(x, top, width, height, color)
        roof = random.random()
        if roof < 0.25 and height > 150:  # A spire with its beacon.
            yield (f'<path d="M {middle - 9:.0f} {top:.0f} l 9 -70 l 9 70 Z" fill="{color}"/>'
                   + lamp(middle, top - 68, 2.6, "#ff4a3c"))
        elif roof < 0.5:  # A stepped roof.
            yield rect(x + width * 0.2, top - 22, width * 0.6, 24, color)
        yield from windows(x, top, width, step, lit, size)
        x += width + random.uniform(0, gap)


def bridge():
    """A suspension bridge on the left, its cables hung with lamps."""
    yield '<path d="M 0 770 H 700" stroke="#1a2038" stroke-width="9"/>'
    yield '<path d="M 180 792 V 600 M 520 792 V 600" stroke="#232a48" stroke-width="13"/>'
    for left in (-160, 180, 520):
        for i in range(33):
            x, y = left + 340 * i / 32, 604 + 600 * (i / 32) * (1 - i / 32)
            if x < 690 and y < 768:
                yield f'<path d="M {x:.0f} {y:.0f} V 768" stroke="#2a3358"/>' + lamp(x, y, 2.4, "#ffe6b8")
    yield from (lamp(x, 764, 3, "#ffbe6a") for x in range(8, 700, 34))


city = [*row(150, 420, 50, 110, 4, "#141b36", 11, 0.2, 3),
        *row(70, 290, 60, 140, 14, "#0a0e20", 15, 0.26, 5),
        *bridge(), *(lamp(x, SHORE - 7, 3.2, "#ffd08a") for x in range(720, WIDTH, 41))]
stars = [lamp(random.uniform(0, WIDTH), random.uniform(0, 480), random.uniform(0.5, 1.3), "#cfd8ff",
              random.uniform(0.2, 0.7)) for _ in range(170)]
# What the shells cast on the water: soft stains of their colors.
hues = [f'<radialGradient id="{name}"><stop offset="0" stop-color="{color}" stop-opacity="0.4"/>'
        f'<stop offset="1" stop-color="{color}" stop-opacity="0"/></radialGradient>'
        for name, color in (("red", "#ff4560"), ("gold", "#ffb040"), ("blue", "#4a80ff"))]
sheen = [f'<ellipse cx="{x}" cy="{SHORE + 120}" rx="{rx}" ry="150" fill="url(#{name})"/>'
         for x, rx, name in ((420, 190, "red"), (930, 150, "gold"), (1240, 210, "blue"), (1620, 170, "red"))]
mirrored = f'transform="translate(0 {2 * SHORE}) scale(1 -1)"'
print(f'''<svg xmlns="http://www.w3.org/2000/svg" width="1920" height="1080">{"".join(hues)}
<linearGradient id="sky" x1="0" y1="0" x2="0" y2="1">
  <stop offset="0" stop-color="#02030c"/><stop offset="0.55" stop-color="#0b1030"/>
  <stop offset="0.85" stop-color="#2a1d4a"/><stop offset="1" stop-color="#5a3350"/></linearGradient>
<linearGradient id="deep" x1="0" y1="0" x2="0" y2="1">
  <stop offset="0" stop-color="#050814" stop-opacity="0.1"/>
  <stop offset="1" stop-color="#01020a" stop-opacity="0.86"/></linearGradient>
<filter id="bloom" x="0" y="0" width="1" height="1"><feGaussianBlur stdDeviation="9"/></filter>
<filter id="water" x="0" y="0" width="1" height="1">
  <feGaussianBlur stdDeviation="2.2 8" result="soft"/>
  <feTurbulence type="fractalNoise" baseFrequency="0.006 0.06" numOctaves="2" seed="4"/>
  <feDisplacementMap in="soft" scale="24" xChannelSelector="R" yChannelSelector="G"/></filter>
<filter id="haze" x="0" y="0" width="1" height="1">
  <feTurbulence type="fractalNoise" baseFrequency="0.0018 0.005" numOctaves="5" seed="9"/>
  <feColorMatrix values="0 0 0 0 0.5  0 0 0 0 0.42  0 0 0 0 0.62  0 0 0 1.6 -0.72"/></filter>
<clipPath id="river"><rect y="{SHORE}" width="1920" height="{1080 - SHORE}"/></clipPath>
<g id="scene"><rect width="1920" height="{SHORE}" fill="url(#sky)"/>{"".join(stars)}
  <rect width="1920" height="{SHORE}" filter="url(#haze)" opacity="0.55"/>
  <g id="city">{"".join(city)}</g></g>
<use href="#city" filter="url(#bloom)" opacity="0.75" style="mix-blend-mode:screen"/>
<g clip-path="url(#river)"><use href="#scene" {mirrored}/>
  <g filter="url(#water)"><use href="#scene" {mirrored}/>
    <use href="#city" {mirrored} opacity="0.8" style="mix-blend-mode:screen"/>{"".join(sheen)}</g>
  <rect y="{SHORE}" width="1920" height="{1080 - SHORE}" fill="url(#deep)"/></g></svg>''')
