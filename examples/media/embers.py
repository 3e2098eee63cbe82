"""The plate of embers.toml: a campfire in a forest at night, as SVG on standard output."""

import random

random.seed(11)
FIRE = (860, 905)


def conifer(x, foot, tall):
    half = tall * random.uniform(0.15, 0.21)
    left, right = [], []
    tiers = max(6, round(tall / 34))
    for k in range(tiers):
        up = foot - tall * (0.08 + 0.9 * k / tiers)
        out = half * (1 - k / tiers) * random.uniform(0.8, 1.15)
        left += [(x - out, up + tall * 0.035), (x - out * 0.45, up - tall * 0.06)]
        right += [(x + out, up + tall * 0.035), (x + out * 0.45, up - tall * 0.06)]
    points = left + [(x, foot - tall * 1.02)] + right[::-1]
    points = [(x - tall * 0.02, foot)] + points + [(x + tall * 0.02, foot)]
    return "M" + "L".join(f"{px:.0f} {py:.0f}" for px, py in points) + "Z"


def trees(low, high, foot, step, fill):
    path, x = [], -40
    while x < 1960:
        # Those around the fire stand back, so that the sparks rise before open sky.
        clear = min(1, 0.35 + abs(x - FIRE[0]) / 700)
        path.append(conifer(x, foot + random.uniform(-8, 8), random.uniform(low, high) * clear))
        x += step * random.uniform(0.6, 1.4)
    return f'<path fill="url(#{fill})" d="{"".join(path)}"/>'


def gradient(name, *stops, place=""):
    inner = "".join(f'<stop offset="{at}" stop-color="{colour}" stop-opacity="{alpha}"/>'
                    for at, colour, alpha in stops)
    return f'<radialGradient id="{name}" {place}>{inner}</radialGradient>'


def lit(name, radius, near, far):
    """What a thing looks like by its distance from the fire."""
    return gradient(name, (0, near, 1), (0.5, far, 1), (1, "#05070b", 1),
                    place=f'gradientUnits="userSpaceOnUse" cx="{FIRE[0]}" cy="{FIRE[1] - 60}" '
                          f'r="{radius}"')


def log(angle, length, thick, dx, dy):
    bark = "".join(f'M{random.uniform(-length, length * 0.6):.0f} '
                   f'{random.uniform(1 - thick, thick - 1):.0f}'
                   f'h{random.uniform(0.15, 0.35) * length:.0f}' for _ in range(30))
    return (f'<g transform="translate({FIRE[0] + dx} {FIRE[1] + dy}) rotate({angle})">'
            f'<rect x="{-length}" y="{-thick}" width="{2 * length}" height="{2 * thick}" '
            f'rx="{thick * 0.7}" fill="url(#bark)"/>'
            f'<path d="{bark}" stroke="#090504" stroke-width="3"/></g>')


def stone(x, y, r):
    corners = " ".join(f"{x + r * random.uniform(0.85, 1.15) * c:.0f},{y + r * 0.62 * s:.0f}"
                       for c, s in ((1, 0.5), (0.6, -0.7), (-0.1, -1), (-0.8, -0.6), (-1, 0.5),
                                    (-0.4, 1), (0.5, 1)))
    return f'<polygon points="{corners}" fill="url(#rock)" stroke="#080504" stroke-width="3"/>'


stars = "".join(f'<circle cx="{random.uniform(0, 1920):.0f}" cy="{random.uniform(0, 620):.0f}" '
                f'r="{random.uniform(0.5, 1.5):.1f}" fill="#c8d8ff" '
                f'opacity="{random.uniform(0.15, 0.7):.2f}"/>' for _ in range(260))
ring = "".join(stone(FIRE[0] + x, FIRE[1] + 62 + 24 * (1 - (x / 250) ** 2), random.uniform(34, 50))
               for x in range(-250, 251, 62))
flames = "".join(f'<path d="M{x - w} {FIRE[1] + 20} C{x - w} {y + h * 0.5:.0f} {x + lean} '
                 f'{y + h * 0.6:.0f} {x + lean} {y} C{x + lean + 12} {y + h * 0.5:.0f} {x + w} '
                 f'{y + h * 0.5:.0f} {x + w} {FIRE[1] + 20} Z"/>' for x, w, h, lean, y in (
                     (790, 46, 190, -12, 740), (860, 70, 300, 18, 640), (932, 48, 210, 6, 725)))
print(f"""<svg xmlns="http://www.w3.org/2000/svg" width="1920" height="1080">
<linearGradient id="sky" x2="0" y2="1"><stop offset="0" stop-color="#03060f"/>
<stop offset="0.55" stop-color="#0a1728"/>
<stop offset="0.85" stop-color="#16283a"/></linearGradient>
{lit("far", 1000, "#5c2e16", "#101d2c")}{lit("near", 1250, "#8a3c12", "#120f12")}
{lit("ground", 1000, "#a04a14", "#140d09")}
<linearGradient id="bark" x2="0" y2="1"><stop offset="0" stop-color="#c8601c"/>
<stop offset="0.3" stop-color="#4a1e0b"/><stop offset="1" stop-color="#0c0604"/></linearGradient>
<linearGradient id="rock" x2="0" y2="1"><stop offset="0" stop-color="#d8722c"/>
<stop offset="0.4" stop-color="#3a2014"/><stop offset="1" stop-color="#0a0706"/></linearGradient>
{gradient("air", (0, "#ff8a2a", 0.6), (0.25, "#e0500f", 0.26), (0.6, "#8a2408", 0.1),
          (1, "#401004", 0))}
{gradient("heart", (0, "#ffd890", 1), (0.4, "#ff8a1c", 0.8), (1, "#d03a00", 0))}
<filter id="soft" x="-1" y="-1" width="3" height="3"><feGaussianBlur stdDeviation="16"/></filter>
<filter id="haze"><feGaussianBlur stdDeviation="2.5"/></filter>
<filter id="earth" x="0" y="0" width="1" height="1">
<feTurbulence type="fractalNoise" baseFrequency="0.03 0.2" numOctaves="4" seed="4"/>
<feColorMatrix values="0 0 0 0 0  0 0 0 0 0  0 0 0 0 0  0 0 0 2.4 -0.9"/></filter>
<rect width="1920" height="1080" fill="url(#sky)"/>{stars}
<g filter="url(#haze)">{trees(300, 520, 850, 52, "far")}</g>
{trees(460, 860, 900, 105, "near")}
<path d="M0 880 Q480 850 960 862 T1920 872 V1080 H0 Z" fill="url(#ground)"/>
<rect y="862" width="1920" height="218" filter="url(#earth)" opacity="0.75"/>
<ellipse cx="{FIRE[0]}" cy="{FIRE[1] - 110}" rx="900" ry="680" fill="url(#air)"/>
<ellipse cx="{FIRE[0]}" cy="{FIRE[1] + 52}" rx="225" ry="34" fill="#140803"/>
{log(-13, 210, 24, -20, 22)}{log(16, 200, 23, 30, 20)}
<g filter="url(#soft)" fill="#ff7a14" opacity="0.75">{flames}</g>
<ellipse cx="{FIRE[0]}" cy="{FIRE[1] - 20}" rx="200" ry="105" fill="url(#heart)"/>
{log(-34, 130, 22, -70, -2)}{log(36, 125, 21, 75, -4)}{ring}
</svg>""")
