"""The plate of embers.toml: a campfire in a forest at night, as SVG on standard output."""

import random

random.seed(11)
X, Y = 860, 905  # of the fire


def conifer(x, foot, tall):
    half, tiers = tall * random.uniform(0.15, 0.21), max(6, round(tall / 34))
    side = [(0.02 * tall, foot)]
    for k in range(tiers):
        up = foot - tall * (0.08 + 0.9 * k / tiers)
        out = half * (1 - k / tiers) * random.uniform(0.8, 1.15)
        side += [(out, up + tall * 0.035), (out * 0.45, up - tall * 0.06)]
    points = [(x - out, y) for out, y in side] + [(x, foot - tall * 1.02)]
    points += [(x + out, y) for out, y in side[::-1]]
    return "M" + "L".join(f"{px:.0f} {py:.0f}" for px, py in points) + "Z"


def trees(low, high, foot, step, fill):
    path, x = [], -40
    while x < 1960:
        # Those around the fire stand back, so that the sparks rise before open sky.
        clear = min(1, 0.35 + abs(x - X) / 700)
        path.append(conifer(x, foot + random.uniform(-8, 8), random.uniform(low, high) * clear))
        x += step * random.uniform(0.6, 1.4)
    return f'<path fill="url(#{fill})" d="{"".join(path)}"/>'


def gradient(kind, name, *stops, place=""):
    """A gradient of stops "OFFSET COLOR [OPACITY]"; a linear one runs from top to bottom."""
    place = place or ('x2="0" y2="1"' if kind == "linear" else "")
    inner = "".join('<stop offset="{}" stop-color="{}" stop-opacity="{}"/>'.format(
        *(stop + " 1").split()[:3]) for stop in stops)
    return f'<{kind}Gradient id="{name}" {place}>{inner}</{kind}Gradient>'


def lit(name, radius, near, far):
    """What a thing looks like by its distance from the fire."""
    return gradient("radial", name, f"0 {near}", f"0.5 {far}", "1 #05070b",
                    place=f'gradientUnits="userSpaceOnUse" cx="{X}" cy="{Y - 60}" r="{radius}"')


def log(angle, length, thick, dx, dy):
    bark = "".join(f'M{random.uniform(-length, length * 0.6):.0f} '
                   f'{random.uniform(1 - thick, thick - 1):.0f}'
                   f'h{random.uniform(0.15, 0.35) * length:.0f}' for _ in range(30))
    return (f'<g transform="translate({X + dx} {Y + dy}) rotate({angle})">'
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
ring = "".join(stone(X + x, Y + 86 - 24 * (x / 250) ** 2, random.uniform(34, 50))
               for x in range(-250, 251, 62))
print(f"""<svg xmlns="http://www.w3.org/2000/svg" width="1920" height="1080">
{gradient("linear", "sky", "0 #03060f", "0.5 #0a1728", "0.75 #130f10")}
{gradient("linear", "bark", "0 #c8601c", "0.3 #4a1e0b", "1 #0c0604")}
{gradient("linear", "rock", "0 #d8722c", "0.4 #3a2014", "1 #0a0706")}
{lit("far", 1000, "#5c2e16", "#14161b")}{lit("near", 1250, "#8a3c12", "#120f12")}
{lit("ground", 1000, "#a04a14", "#140d09")}
{gradient("radial", "air", "0 #ff8a2a 0.6", "0.25 #e0500f 0.26", "0.6 #8a2408 0.1", "1 #401004 0")}
{gradient("radial", "heart", "0 #ffd890", "0.4 #ff8a1c 0.8", "1 #d03a00 0")}
<filter id="haze"><feGaussianBlur stdDeviation="2.5"/></filter>
<filter id="earth" x="0" y="0" width="1" height="1">
<feTurbulence type="fractalNoise" baseFrequency="0.03 0.2" numOctaves="4" seed="4"/>
<feColorMatrix values="0 0 0 0 0  0 0 0 0 0  0 0 0 0 0  0 0 0 2.4 -0.9"/></filter>
<rect width="1920" height="1080" fill="url(#sky)"/>{stars}
<g filter="url(#haze)">{trees(300, 520, 850, 52, "far")}</g>
{trees(460, 860, 900, 105, "near")}
<path d="M0 880 Q480 850 960 862 T1920 872 V1080 H0 Z" fill="url(#ground)"/>
<rect y="862" width="1920" height="218" filter="url(#earth)" opacity="0.75"/>
<ellipse cx="{X}" cy="{Y - 110}" rx="900" ry="680" fill="url(#air)"/>
<ellipse cx="{X}" cy="{Y + 52}" rx="225" ry="34" fill="#140803"/>
{log(-13, 210, 24, -20, 22)}{log(16, 200, 23, 30, 20)}
<ellipse cx="{X}" cy="{Y - 60}" rx="200" ry="170" fill="url(#heart)"/>
{log(-34, 130, 22, -70, -2)}{log(36, 125, 21, 75, -4)}{ring}
</svg>""")
