"""The plate of confetti.toml: a stage with a crowd before it, as SVG on standard output."""

import math
import random

random.seed(9)
PAPER = ["#ff2d55", "#ffb300", "#00c8ff", "#7dff3a", "#ff5ad0", "#8a5cff", "#ff6a1c", "#ffee33"]
LIGHTS = ["#ff4a9a", "#ffb040", "#38c8ff", "#a060ff", "#ff6a4a"]


def beam(x, angle, color):
    reach, spread = 1250, 0.1
    corners = " ".join(f"{x + reach * math.sin(angle + d):.0f},{reach * math.cos(angle + d):.0f}"
                       for d in (-spread, spread))
    return f'<polygon points="{x - 10},0 {x + 10},0 {corners}" fill="{color}" opacity="0.26"/>'


def bokeh(x, y, r):
    color = random.choice(LIGHTS)
    return (f'<circle cx="{x:.0f}" cy="{y:.0f}" r="{r:.0f}" fill="{color}" stroke="{color}" '
            f'stroke-width="3" fill-opacity="{random.uniform(0.08, 0.3):.2f}" '
            f'stroke-opacity="{random.uniform(0.15, 0.4):.2f}"/>')


def reveller(x):
    """A head with shoulders; some raise their arms."""
    y, r = random.uniform(960, 1020), random.uniform(30, 40)
    arms = ""
    for side in (-1, 1):
        if random.random() < 0.4:
            elbow = x + side * random.uniform(2.2, 3) * r
            hand = x + side * random.uniform(0.9, 2.4) * r
            lift = random.uniform(2.2, 3.6) * r
            arms += (f'<path d="M{x + side * r * 1.5:.0f} {y + r * 2:.0f} L{elbow:.0f} '
                     f'{y - r * 0.2:.0f} L{hand:.0f} {y - lift:.0f}" fill="none" '
                     f'stroke="#06030d" stroke-width="{r * 0.55:.0f}" stroke-linecap="round" '
                     f'stroke-linejoin="round"/>'
                     f'<ellipse cx="{hand:.0f}" cy="{y - lift - 8:.0f}" rx="{r * 0.4:.0f}" '
                     f'ry="{r * 0.55:.0f}"/>')
    return (f'{arms}<ellipse cx="{x:.0f}" cy="{y:.0f}" rx="{r * 0.8:.0f}" ry="{r:.0f}"/>'
            f'<path d="M{x - r * 2.2:.0f} 1080 Q{x - r * 2:.0f} {y + r * 0.9:.0f} {x:.0f} '
            f'{y + r * 0.9:.0f} T{x + r * 2.2:.0f} 1080 Z"/>')


# The paper takes its colors from the topmost row, so the pennants there touch one another.
pennants = "".join(f'<path d="M{x} 0 h64 L{x + 32} {random.uniform(52, 72):.0f} Z" '
                   f'fill="{PAPER[x // 64 * 3 % 8]}"/>' for x in range(0, 1920, 64))
beams = "".join(beam(x, a, c) for x, a, c in (
    (180, 0.42, "#ff4aa0"), (480, -0.16, "#38b8ff"), (760, 0.3, "#9a5cff"), (960, 0, "#ffd890"),
    (1160, -0.3, "#ff6a8a"), (1440, 0.16, "#4ad0ff"), (1740, -0.42, "#b060ff")))
lamps = "".join(f'<circle cx="{x}" cy="96" r="{r}" fill="url(#lamp)"/>'
                for x in (180, 480, 760, 960, 1160, 1440, 1740) for r in (70, 28))
spots = "".join(bokeh(random.uniform(0, 1920), random.gauss(560, 190), random.uniform(14, 74))
                for _ in range(70))
crowd = "".join(reveller(x + random.uniform(-14, 14)) for x in range(-10, 1960, 84))
print(f"""<svg xmlns="http://www.w3.org/2000/svg" width="1920" height="1080">
<linearGradient id="room" x2="0" y2="1"><stop offset="0" stop-color="#0c0620"/>
<stop offset="0.6" stop-color="#341256"/><stop offset="0.8" stop-color="#5a1a5c"/>
<stop offset="1" stop-color="#12061c"/></linearGradient>
<radialGradient id="stage"><stop offset="0" stop-color="#ffc890" stop-opacity="0.7"/>
<stop offset="0.4" stop-color="#ff5a9a" stop-opacity="0.35"/>
<stop offset="1" stop-color="#6a1a8a" stop-opacity="0"/></radialGradient>
<radialGradient id="lamp"><stop offset="0" stop-color="#fff6e0"/>
<stop offset="0.3" stop-color="#ffe0b0" stop-opacity="0.4"/>
<stop offset="1" stop-color="#ffc080" stop-opacity="0"/></radialGradient>
<radialGradient id="edge" r="0.75"><stop offset="0.55" stop-color="#05020c" stop-opacity="0"/>
<stop offset="1" stop-color="#05020c" stop-opacity="0.8"/></radialGradient>
<filter id="soft"><feGaussianBlur stdDeviation="22"/></filter>
<filter id="focus"><feGaussianBlur stdDeviation="1.6"/></filter>
<rect width="1920" height="1080" fill="url(#room)"/>
<ellipse cx="960" cy="860" rx="1000" ry="420" fill="url(#stage)"/>
<g filter="url(#soft)">{beams}</g><g filter="url(#focus)">{spots}{lamps}</g>
<g fill="#06030d" filter="url(#focus)">{crowd}</g>
<rect width="1920" height="1080" fill="url(#edge)"/>{pennants}
</svg>""")
