"""The plate of magic_portal.toml: a round gate of stone in a wood, as SVG on standard output."""

import math
import random

random.seed(21)
X, Y, INNER, OUTER = 960, 500, 318, 424


def at(radius, turn):
    angle = 2 * math.pi * turn
    return f"{X + radius * math.cos(angle):.0f} {Y + radius * math.sin(angle):.0f}"


def gradient(kind, name, *stops, place=""):
    """A gradient of stops "OFFSET COLOR [OPACITY]"; a linear one runs from top to bottom."""
    place = place or ('x2="0" y2="1"' if kind == "linear" else "")
    inner = "".join('<stop offset="{}" stop-color="{}" stop-opacity="{}"/>'.format(
        *(stop + " 1").split()[:3]) for stop in stops)
    return f'<{kind}Gradient id="{name}" {place}>{inner}</{kind}Gradient>'


def lit(name, y, radius, *stops):
    """What a thing looks like by its distance from the light at X, y."""
    return gradient("radial", name, *stops,
                    place=f'gradientUnits="userSpaceOnUse" cx="{X}" cy="{y}" r="{radius}"')


def block(first, last):
    """A wedge of the gate, worn at its outer edge, with a rune."""
    gap, out = 0.0016, OUTER + random.uniform(-12, 12)
    middle = (first + last) / 2
    outline = (f"M{at(INNER, first + gap)} L{at(out, first + gap)} "
               f"L{at(out + random.uniform(0, 7), middle)} L{at(out, last - gap)} "
               f"L{at(INNER, last - gap)} L{at(INNER - 3, middle)} Z")
    rune = (f'<path d="M{at(352, middle - 0.006)} L{at(386, middle + random.uniform(-0.01, 0.01))} '
            f'L{at(368, middle + 0.008)} L{at(350, middle + 0.004)}" fill="none" stroke="#7ae8ff" '
            f'stroke-width="4" opacity="0.7" filter="url(#rune)"/>')
    shade = random.uniform(0, 0.35)
    return (f'<path d="{outline}" fill="url(#stone)"/><path d="{outline}" fill="#05060c" '
            f'opacity="{shade:.2f}"/>{rune}')


def trunk(x, wide, fill):
    lean, foot = random.uniform(-50, 50), 930 if wide < 30 else 1010
    return (f'<path fill="{fill}" d="M{x - wide * 2:.0f} {foot} Q{x - wide:.0f} {foot - 60} '
            f'{x - wide * 0.9:.0f} {foot - 260} L{x + lean - wide * 0.6:.0f} 0 '
            f'H{x + lean + wide * 0.6:.0f} L{x + wide * 0.9:.0f} {foot - 260} '
            f'Q{x + wide:.0f} {foot - 60} {x + wide * 2:.0f} {foot} Z"/>')


def arm(turn):
    """One arm of the whirl inside the gate."""
    points = " L".join(at(INNER * (1 - k / 40) ** 0.8, turn + 0.9 * (k / 40) ** 1.3)
                       for k in range(38))
    color = random.choice(["#38d8ff", "#8a5cff", "#d070ff"])
    return (f'<path d="M{points}" fill="none" stroke="{color}" stroke-width='
            f'"{random.uniform(5, 26):.0f}" opacity="{random.uniform(0.15, 0.5):.2f}"/>')


turns = [k / 23 + random.uniform(-0.006, 0.006) for k in range(23)]
blocks = "".join(block(a, b) for a, b in zip(turns, turns[1:] + [turns[0] + 1]))
far = "".join(trunk(random.uniform(0, 1920), random.uniform(9, 22), "#0e1a30") for _ in range(34))
rim = "".join(f"M{X - r} {Y} a{r} {r} 0 1 0 {2 * r} 0 a{r} {r} 0 1 0 {-2 * r} 0 Z"
              for r in (INNER, OUTER - 10))
near = "".join(trunk(x, w, "url(#bole)") for x, w in ((70, 74), (330, 42), (1610, 50), (1850, 84)))
steps = "".join(f'<path d="M{X - w} {y} H{X + w} l26 44 H{X - w - 26} Z" fill="url(#step)" '
                f'stroke="#05060c" stroke-width="4"/>'
                for w, y in ((300, 862), (380, 906), (470, 950)))
print(f"""<svg xmlns="http://www.w3.org/2000/svg" width="1920" height="1080">
{gradient("linear", "sky", "0 #040816", "0.75 #14284a", "1 #0a1020")}
{gradient("linear", "ground", "0 #060914 0", "0.45 #060914")}
{gradient("linear", "fade", "0.5 #000", "0.85 #fff")}
{gradient("radial", "air", "0.2 #6a80ff 0.75", "0.55 #4a3ad0 0.32", "1 #1a1060 0")}
{gradient("radial", "gate", "0 #b8f0ff", "0.16 #4aa8ff", "0.5 #3a2ac0", "0.85 #180a50",
          "1 #2a50c0")}
{lit("stone", Y, OUTER + 14, "0.73 #8ac8f8", "0.82 #4a5c8c", "1 #161a2c")}
{lit("bole", Y, 1000, "0.45 #141d38", "0.8 #060812")}
{lit("step", 840, 560, "0 #5a8cc0", "0.5 #243050", "1 #0a0d1a")}
<filter id="soft"><feGaussianBlur stdDeviation="9"/></filter>
<filter id="haze"><feGaussianBlur stdDeviation="3"/></filter>
<filter id="rune" x="-1" y="-1" width="3" height="3"><feGaussianBlur stdDeviation="1.6"/></filter>
<filter id="grain" x="0" y="0" width="1" height="1">
<feTurbulence type="fractalNoise" baseFrequency="0.04 0.05" numOctaves="4" seed="8"/>
<feColorMatrix values="0 0 0 0 0  0 0 0 0 0  0 0 0 0 0.03  0 0 0 3 -1.3"/></filter>
<filter id="mist" x="0" y="0" width="1" height="1">
<feTurbulence type="fractalNoise" baseFrequency="0.003 0.012" numOctaves="4" seed="3"/>
<feColorMatrix values="0 0 0 0 0.35  0 0 0 0 0.5  0 0 0 0 0.9  0 0 0 2.6 -1.2"/></filter>
<mask id="low"><rect width="1920" height="1080" fill="url(#fade)"/></mask>
<clipPath id="rim"><path d="{rim}" clip-rule="evenodd"/></clipPath>
<clipPath id="hole"><circle cx="{X}" cy="{Y}" r="{INNER + 4}"/></clipPath>
<rect width="1920" height="1080" fill="url(#sky)"/><g filter="url(#haze)">{far}</g>
<ellipse cx="{X}" cy="{Y + 40}" rx="1000" ry="700" fill="url(#air)"/>
<rect y="780" width="1920" height="300" fill="url(#ground)"/>{near}
<ellipse cx="{X}" cy="960" rx="760" ry="110" fill="url(#air)"/>
<g mask="url(#low)"><rect width="1920" height="1080" filter="url(#mist)" opacity="0.4"/></g>
{steps}<circle cx="{X}" cy="{Y}" r="{OUTER}" fill="#07080f"/>{blocks}
<g clip-path="url(#hole)"><circle cx="{X}" cy="{Y}" r="{INNER + 4}" fill="url(#gate)"/>
<g filter="url(#soft)">{"".join(arm(k / 14) for k in range(14))}</g></g>
<g clip-path="url(#rim)"><rect width="1920" height="1080" filter="url(#grain)" opacity="0.7"/></g>
</svg>""")
