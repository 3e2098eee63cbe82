"""A brick wall at night with the tubes of a sign, as SVG: the plate of neon_sign.toml. The tubes are
the lines of that scene's mask, so that light and glass lie in one place; the wall is lit by them."""

import pathlib
import random
import tomllib

random.seed(4)
SCENE = pathlib.Path(__file__).parent.parent / "neon_sign.toml"
RED, GREEN, CYAN, PINK, AMBER = "#ff4020", "#30e060", "#20c8ff", "#ff2a8c", "#ff7c14"
COLORS = (RED, GREEN, RED, CYAN, PINK, PINK, PINK, AMBER)

mask = tomllib.loads(SCENE.read_text())["mask"]["path"]
lines = [line[1:] for line in mask.split("\n") if line]
tubes = list(zip(lines, COLORS, strict=True))
ends = [(line.split()[:2], line.split()[-2:]) for line in lines]


def draw(width, opacity=1.0, extra=""):
    strokes = "".join(f'<path stroke="{color}" d="M{line}"/>' for line, color in tubes)
    return f'<g class="tube" stroke-width="{width}" opacity="{opacity}" {extra}>{strokes}</g>'


print("""<svg xmlns="http://www.w3.org/2000/svg" width="1920" height="1080">
<style>.tube{fill:none;stroke-linecap:round;stroke-linejoin:round}</style>
<filter id="grain" x="0" y="0" width="1" height="1">
  <feTurbulence type="fractalNoise" baseFrequency="0.04 0.09" numOctaves="2" seed="2"/>
  <feColorMatrix values="0 0 0 0 0  0 0 0 0 0  0 0 0 0 0  0 0 0 2.2 -0.75"/>
</filter>
<filter id="near" filterUnits="userSpaceOnUse" x="0" y="0" width="1920" height="1080"><feGaussianBlur stdDeviation="26"/></filter>
<filter id="far" filterUnits="userSpaceOnUse" x="0" y="0" width="1920" height="1080"><feGaussianBlur stdDeviation="95"/></filter>
<filter id="soft" filterUnits="userSpaceOnUse" x="0" y="0" width="1920" height="1080"><feGaussianBlur stdDeviation="5"/></filter>
<radialGradient id="ambient" cx="0.52" cy="0.45" r="0.7"><stop offset="0" stop-color="#2a2036"/>
  <stop offset="1" stop-color="#07060f"/></radialGradient>
<rect width="1920" height="1080" fill="#5d534d"/>""")

for row in range(28):  # bricks in running bond
    y, x = row * 40 - 8, -random.randint(0, 20) - 56 * (row % 2)
    while x < 1920:
        width = 108 + random.randint(-3, 3)
        shade = random.gauss(0, 13)
        red, green, blue = (max(0, min(255, round(c + shade))) for c in (176, 140, 128))
        print(f'<rect x="{x}" y="{y + random.randint(-1, 1)}" width="{width - 7}" height="33" rx="3" '
              f'fill="rgb({red},{green},{blue})"/><path stroke="#fff" stroke-opacity="0.16" '
              f'stroke-width="2" d="M{x + 3} {y + 1}h{width - 13}"/>')
        x += width
print('<rect width="1920" height="1080" filter="url(#grain)" opacity="0.55"/>')

# Light times brick: near the tubes their own color, farther off a mixture, in the corners night.
print(f'<g style="mix-blend-mode:multiply"><rect width="1920" height="1080" fill="url(#ambient)"/>'
      f'{draw(190, 0.8, """filter="url(#far)" style="mix-blend-mode:screen" """)}'
      f'{draw(40, 0.85, """filter="url(#near)" style="mix-blend-mode:screen" """)}</g>')

print('<g transform="translate(9 16)" opacity="0.5" filter="url(#soft)">'  # the shadow on the wall
      + draw(13).replace('stroke="#', 'stroke="#000" data-color="#') + "</g>")
print('<g fill="none" stroke="#000" stroke-width="13" stroke-linecap="round">')
for (_, (x, y)), ((to_x, to_y), _) in zip(ends, ends[1:]):
    print(f'<path d="M{x} {y}L{to_x} {to_y}"/>')
print(f'<path d="M900 690Q700 800 660 1080M812 150Q800 60 850 0" stroke-width="7"/></g>')
print(draw(15).replace('stroke="#', 'stroke="#0a0a0c" data-color="#') + draw(11, 0.5))
print('<g style="mix-blend-mode:screen">' + draw(4, 0.22).replace('stroke="#', 'stroke="#fff" data-color="#') + "</g></svg>")
