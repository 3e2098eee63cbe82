"""The plate of warp.toml: gas streaming past a light far ahead, as SVG on standard output."""

import math
import random

random.seed(5)
COLORS = ["#4a8cff", "#7ab8ff", "#9a6cff", "#58e0ff", "#ff7ac8", "#ffc890"]


def streak():
    """A faint far star, drawn out along the line from the center."""
    angle = random.uniform(0, 2 * math.pi)
    near = 60 + 1000 * random.random() ** 1.4
    far = near * random.uniform(1.06, 1.5)
    c, s = math.cos(angle), math.sin(angle)
    return (f'<path d="M{960 + near * c:.0f} {540 + near * s:.0f}L{960 + far * c:.0f} '
            f'{540 + far * s:.0f}" stroke="{random.choice(COLORS)}" '
            f'stroke-width="{0.6 + near / 520:.1f}" opacity="{random.uniform(0.08, 0.4):.2f}"/>')


def veil(angle, spread, color, alpha):
    """A wedge of gas that leads to the center."""
    corners = " ".join(f"{960 + 1300 * math.cos(a):.0f},{540 + 1300 * math.sin(a):.0f}"
                       for a in (angle - spread, angle, angle + spread))
    return f'<polygon points="960,540 {corners}" fill="{color}" opacity="{alpha:.2f}"/>'


veils = "".join(veil(random.uniform(0, 2 * math.pi), random.uniform(0.04, 0.22),
                     random.choice(["#1c48c8", "#5a22b8", "#0a7ab0", "#a0206a"]),
                     random.uniform(0.2, 0.55)) for _ in range(30))
print(f"""<svg xmlns="http://www.w3.org/2000/svg" width="1920" height="1080">
<filter id="soft" filterUnits="userSpaceOnUse" x="0" y="0" width="1920" height="1080">
<feGaussianBlur stdDeviation="34"/></filter>
<filter id="gas" x="0" y="0" width="1" height="1">
<feTurbulence type="fractalNoise" baseFrequency="0.0035 0.005" numOctaves="5" seed="12"/>
<feColorMatrix values="0 0 0 0 0.01  0 0 0 0 0.01  0 0 0 0 0.04  0 0 0 4 -1.6"/>
<feGaussianBlur stdDeviation="14"/></filter>
<radialGradient id="core"><stop offset="0" stop-color="#e8f6ff" stop-opacity="0.95"/>
<stop offset="0.08" stop-color="#8cc8ff" stop-opacity="0.65"/>
<stop offset="0.3" stop-color="#3a5cf0" stop-opacity="0.28"/>
<stop offset="1" stop-color="#2a108a" stop-opacity="0"/></radialGradient>
<radialGradient id="edge" gradientUnits="userSpaceOnUse" cx="960" cy="540" r="1120">
<stop offset="0.35" stop-color="#020208" stop-opacity="0"/>
<stop offset="1" stop-color="#020208" stop-opacity="0.9"/></radialGradient>
<rect width="1920" height="1080" fill="#04040f"/>
<g filter="url(#soft)">{veils}</g>
<rect width="1920" height="1080" filter="url(#gas)" opacity="0.8"/>
<rect width="1920" height="1080" fill="url(#edge)"/>
<g stroke-linecap="round">{"".join(streak() for _ in range(520))}</g>
<circle cx="960" cy="540" r="560" fill="url(#core)"/>
</svg>""")
