"""A castle on its hill by a lake, in the last light: the plate of wand_trail.toml, as SVG."""

import random

random.seed(11)
WATER = 930  # the height of the shore
HILL = 470  # where the castle stands: left of the g, which hangs low

print("""<svg xmlns="http://www.w3.org/2000/svg" width="1920" height="1080">
<linearGradient id="sky" x1="0" y1="0" x2="0" y2="1">
  <stop offset="0" stop-color="#04051a"/><stop offset="0.45" stop-color="#0d1140"/>
  <stop offset="0.72" stop-color="#2c2766"/><stop offset="0.88" stop-color="#6b4483"/>
</linearGradient>
<radialGradient id="dawn"><stop offset="0" stop-color="#e58f8c" stop-opacity="0.6"/>
  <stop offset="1" stop-color="#7a4a90" stop-opacity="0"/></radialGradient>
<radialGradient id="lamp"><stop offset="0" stop-color="#ffb45c" stop-opacity="0.5"/>
  <stop offset="1" stop-color="#ff9040" stop-opacity="0"/></radialGradient>
<filter id="mist" x="0" y="0" width="1" height="1">
  <feTurbulence type="fractalNoise" baseFrequency="0.0013 0.008" numOctaves="5" seed="8"/>
  <feColorMatrix values="0 0 0 0 0.42  0 0 0 0 0.36  0 0 0 0 0.75  0 0 0 2.6 -1.25"/>
</filter>
<filter id="ripple" x="0" y="0" width="1" height="1">
  <feTurbulence type="fractalNoise" baseFrequency="0.004 0.09" numOctaves="3" seed="3" result="waves"/>
  <feDisplacementMap in="SourceGraphic" in2="waves" scale="34"/><feGaussianBlur stdDeviation="2 1"/>
</filter>
<filter id="soft"><feGaussianBlur stdDeviation="1.2"/></filter>
<rect width="1920" height="1080" fill="url(#sky)"/>
<rect width="1920" height="960" filter="url(#mist)" opacity="0.32"/>
<ellipse cx="620" cy="900" rx="1080" ry="330" fill="url(#dawn)"/>""")

for _ in range(420):  # distant stars, fewer and dimmer towards the horizon
    x, y = random.uniform(0, 1920), 760 * random.random() ** 1.6
    print(f'<circle cx="{x:.0f}" cy="{y:.0f}" r="{random.uniform(0.5, 1.5):.1f}" '
          f'fill="#cdd6ff" opacity="{random.uniform(0.15, 0.7) * (1 - y / 900):.2f}"/>')


def hills(base, height, color):
    y, slope, points = base, 0, [f"M0 {WATER}"]
    for x in range(0, 1921, 12):
        slope = 0.93 * slope + random.uniform(-1, 1) * height / 40 - 0.004 * (y - base)
        y = min(y + slope, WATER - 4)
        points.append(f"L{x} {y:.0f}")
    print(f'<path d="{"".join(points)}L1920 {WATER}Z" fill="{color}"/>')


def tower(x, top, width, roof):
    """A round tower with its battlement, a pointed roof and a few lit windows."""
    half = width / 2
    print(f'<path fill="#0c0b26" d="M{x - half} {WATER}V{top}h-4v-12h{width + 8}v12h-4V{WATER}Z"/>'
          f'<path fill="#15123a" d="M{x - half - 7} {top - 11}L{x} {top - roof}L{x + half + 7} {top - 11}Z"/>'
          f'<path stroke="#15123a" stroke-width="2" d="M{x} {top - roof + 4}v-22"/>')
    for y in range(int(top) + 16, 846, 26):
        if random.random() < 0.62:
            lit = random.choice(("#ffd58a", "#ffb257", "#f59a48"))
            wx = x + random.uniform(-0.25, 0.25) * width
            print(f'<circle cx="{wx:.0f}" cy="{y + 6}" r="26" fill="url(#lamp)"/>'
                  f'<path fill="{lit}" d="M{wx - 3:.0f} {y + 12}v-9q3 -6 6 0v9Z"/>')


print('<g id="land">')
hills(860, 60, "#33285f")
hills(890, 34, "#1d1844")
print(f'<path fill="#0b0a22" d="M{HILL - 400} {WATER}q140 -30 240 -68t160 -26t160 26t260 68Z"/>'
      f'<path fill="#0c0b26" d="M{HILL - 154} 862V806h308v56Z"/>')
for x, *shape in ((0, 690, 46, 96), (-44, 738, 34, 74), (46, 730, 36, 78), (-88, 770, 30, 62),
                  (90, 766, 32, 66), (-134, 792, 34, 54), (138, 790, 34, 56), (-20, 760, 26, 40),
                  (24, 772, 26, 40)):
    tower(HILL + x, *shape)
for _ in range(150):  # trees on the hill and along the shore
    x, size = random.uniform(-10, 1930), random.uniform(14, 40)
    y = WATER - max(0, 62 - abs(x - HILL) / 6) * random.random()
    print(f'<path fill="#08071a" d="M{x - size / 4:.0f} {y + 4:.0f}L{x:.0f} {y - size:.0f}l{size / 4:.0f} {size + 4:.0f}Z"/>')
print(f'</g><rect y="{WATER}" width="1920" height="150" fill="#141238"/>'
      f'<clipPath id="lake"><rect y="{WATER}" width="1920" height="150"/></clipPath>'
      f'<g clip-path="url(#lake)"><g filter="url(#ripple)" opacity="0.75">'
      f'<ellipse cx="620" cy="{WATER}" rx="1000" ry="120" fill="url(#dawn)"/>'
      f'<use href="#land" transform="matrix(1 0 0 -0.75 0 {1.75 * WATER})"/></g></g>'
      f'<rect y="{WATER - 2}" width="1920" height="3" fill="#8a6aa8" opacity="0.35" filter="url(#soft)"/></svg>')
