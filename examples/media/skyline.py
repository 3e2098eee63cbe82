"""Prints the plate of fireworks.toml as SVG: a city at night on a river that mirrors it."""
import random

random.seed(11)
WIDTH, SHORE = 1920, 792
WARM = ["#ffcf87", "#ffb65c", "#ffe2b0", "#ff9d4a"]
COOL = ["#bfe0ff", "#8fd0ff", "#e8f4ff"]


def windows(x, top, width, step, lit, size):
    """The lit windows of one building: whole floors share a mood, as offices do."""
    out = []
    for y in range(int(top) + 10, SHORE - 8, step):
        busy = random.random() < 0.25
        for column in range(int(x) + 6, int(x + width) - 5, step - 2):
            if random.random() < (lit * 2.2 if busy else lit):
                color = random.choice(COOL if random.random() < 0.2 else WARM)
                out.append(f'<rect x="{column}" y="{y}" width="{size}" height="{size * 1.35:.1f}" '
                           f'fill="{color}" opacity="{random.uniform(0.35, 1):.2f}"/>')
    return out


def row(low, high, narrow, wide, gap, color, step, lit, size):
    """A row of buildings from edge to edge, tallest a little off the centre."""
    out, x = [], -20.0
    while x < WIDTH:
        width = random.uniform(narrow, wide)
        centre = max(0.0, 1 - abs(x + width / 2 - 1120) / 900)
        height = random.uniform(low, high) * (0.45 + 0.75 * centre)
        top = SHORE - height
        out.append(f'<rect x="{x:.0f}" y="{top:.0f}" width="{width:.0f}" height="{height:.0f}" fill="{color}"/>')
        kind = random.random()
        if kind < 0.25 and height > 150:  # A spire with its beacon.
            mid = x + width / 2
            out.append(f'<path d="M {mid - 9:.0f} {top:.0f} L {mid:.0f} {top - 70:.0f} L {mid + 9:.0f} {top:.0f} Z" fill="{color}"/>'
                       f'<circle cx="{mid:.0f}" cy="{top - 68:.0f}" r="2.6" fill="#ff4a3c"/>')
        elif kind < 0.5:  # A stepped roof.
            out.append(f'<rect x="{x + width * 0.2:.0f}" y="{top - 22:.0f}" width="{width * 0.6:.0f}" height="24" fill="{color}"/>')
        out += windows(x, top, width, step, lit, size)
        x += width + random.uniform(0, gap)
    return out


def bridge():
    """A suspension bridge on the left, its cables hung with lamps."""
    out = ['<path d="M 0 770 H 700" stroke="#1a2038" stroke-width="9"/>']
    for tower in (180, 520):
        out.append(f'<path d="M {tower} 792 V 600" stroke="#232a48" stroke-width="13"/>')
    for left, right in ((-160, 180), (180, 520), (520, 860)):
        for i in range(33):
            t = i / 32
            x, y = left + (right - left) * t, 604 + 150 * 4 * t * (1 - t)
            if x < 690 and y < 768:
                out.append(f'<path d="M {x:.0f} {y:.0f} V 768" stroke="#2a3358" stroke-width="1"/>'
                           f'<circle cx="{x:.0f}" cy="{y:.0f}" r="2.4" fill="#ffe6b8"/>')
    out += [f'<circle cx="{x}" cy="764" r="3" fill="#ffbe6a"/>' for x in range(8, 700, 34)]
    return out


def lamps():
    """The promenade along the water."""
    return [f'<circle cx="{x}" cy="{SHORE - 7}" r="3.2" fill="#ffd08a"/>' for x in range(720, WIDTH, 41)]


city = (row(150, 420, 50, 110, 4, "#141b36", 11, 0.2, 3)
        + row(70, 290, 60, 140, 14, "#0a0e20", 15, 0.26, 5) + bridge() + lamps())
stars = [f'<circle cx="{random.uniform(0, WIDTH):.0f}" cy="{random.uniform(0, 480):.0f}" '
         f'r="{random.uniform(0.5, 1.3):.1f}" fill="#cfd8ff" opacity="{random.uniform(0.2, 0.7):.2f}"/>'
         for _ in range(170)]
# What the shells cast on the water: long soft stains below where they burst.
sheen = [f'<ellipse cx="{x}" cy="{SHORE + 120}" rx="{rx}" ry="150" fill="url(#{name})"/>'
         for x, rx, name in ((420, 190, "red"), (930, 150, "gold"), (1240, 210, "blue"), (1620, 170, "red"))]
hues = "".join(f'<radialGradient id="{name}"><stop offset="0" stop-color="{color}" stop-opacity="0.4"/>'
               f'<stop offset="1" stop-color="{color}" stop-opacity="0"/></radialGradient>'
               for name, color in (("red", "#ff4560"), ("gold", "#ffb040"), ("blue", "#4a80ff")))
print(f'''<svg xmlns="http://www.w3.org/2000/svg" width="1920" height="1080">{hues}
<linearGradient id="sky" x1="0" y1="0" x2="0" y2="1"><stop offset="0" stop-color="#02030c"/>
<stop offset="0.55" stop-color="#0b1030"/><stop offset="0.85" stop-color="#2a1d4a"/><stop offset="1" stop-color="#5a3350"/></linearGradient>
<linearGradient id="deep" x1="0" y1="0" x2="0" y2="1"><stop offset="0" stop-color="#050814" stop-opacity="0.1"/>
<stop offset="1" stop-color="#01020a" stop-opacity="0.86"/></linearGradient>
<filter id="bloom" x="0" y="0" width="1" height="1"><feGaussianBlur stdDeviation="9"/></filter>
<filter id="water" x="0" y="0" width="1" height="1"><feGaussianBlur stdDeviation="2.2 8" result="soft"/>
<feTurbulence type="fractalNoise" baseFrequency="0.006 0.06" numOctaves="2" seed="4"/>
<feDisplacementMap in="soft" scale="24" xChannelSelector="R" yChannelSelector="G"/></filter>
<filter id="haze" x="0" y="0" width="1" height="1"><feTurbulence type="fractalNoise" baseFrequency="0.0018 0.005" numOctaves="5" seed="9"/>
<feColorMatrix values="0 0 0 0 0.5  0 0 0 0 0.42  0 0 0 0 0.62  0 0 0 1.6 -0.72"/></filter>
<defs><g id="scene"><rect width="1920" height="{SHORE}" fill="url(#sky)"/>{"".join(stars)}
<rect width="1920" height="{SHORE}" filter="url(#haze)" opacity="0.55"/><g id="city">{"".join(city)}</g></g>
<clipPath id="river"><rect y="{SHORE}" width="1920" height="{1080 - SHORE}"/></clipPath></defs>
<use href="#scene"/><use href="#city" filter="url(#bloom)" opacity="0.75" style="mix-blend-mode:screen"/>
<g clip-path="url(#river)"><use href="#scene" transform="translate(0 {2 * SHORE}) scale(1 -1)"/><g filter="url(#water)"><use href="#scene" transform="translate(0 {2 * SHORE}) scale(1 -1)"/>
<use href="#city" transform="translate(0 {2 * SHORE}) scale(1 -1)" opacity="0.8" style="mix-blend-mode:screen"/>{"".join(sheen)}</g>
<rect y="{SHORE}" width="1920" height="{1080 - SHORE}" fill="url(#deep)"/></g></svg>''')
