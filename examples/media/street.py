"""Prints the plate of rain.toml as SVG: a street at night, its lights mirrored in wet asphalt."""
import random

random.seed(21)
VANISH = (1010, 560)
NEON = ["#ff2f7e", "#22d8ff", "#ffb02e", "#a04cff", "#2cff9a", "#ff5136"]
DEPTHS = [-0.55, 0.0, 0.3, 0.5, 0.64, 0.74, 0.82, 0.88]  # Where houses end, as shares of the way to VANISH.


def toward(x, y, share):
    """The point a share of the way from (x, y) to the vanishing point."""
    return x + (VANISH[0] - x) * share, y + (VANISH[1] - y) * share


def panel(x, high, low, near, far, fill, opacity=1.0):
    """A piece of the wall that runs along the street on the side x, between two depths."""
    corners = [toward(x, high, near), toward(x, high, far), toward(x, low, far), toward(x, low, near)]
    points = " ".join(f"{px:.0f},{py:.0f}" for px, py in corners)
    return f'<polygon points="{points}" fill="{fill}" opacity="{opacity:.2f}"/>'


def house(x, near, far):
    """What shines on a house: the shop window at street level, the neon above it, some rooms."""
    width = far - near
    yield panel(x, 585, 775, near + width * 0.1, far - width * 0.12, f"url(#shop{random.randrange(4)})")
    for i in range(1, 5):  # Mullions, and goods behind the glass.
        at = near + width * (0.1 + 0.156 * i)
        yield panel(x, 585, 775, at, at + width * 0.012, "#20140e")
        yield panel(x, random.uniform(660, 720), 775, at + width * 0.03, at + width * 0.1, "#3a2418", 0.7)
    yield panel(x, 545, 572, near + width * 0.06, far - width * 0.1, random.choice(NEON))
    for floor in range(6):
        for room in range(7):
            if random.random() < 0.2:
                at, low = near + width * (0.1 + room * 0.12), 460 - floor * 105
                yield panel(x, low - 56, low, at, at + width * 0.06,
                            random.choice(("#ffc878", "#ffdca4", "#9cc8ff")), random.uniform(0.3, 0.8))


def sign(x, y, width, height, color, count):
    """A neon sign over the pavement: a frame, and three strokes for each of its characters."""
    cell, strokes = height / count, ""
    for i in range(count):
        top = y + cell * (i + 0.22)
        strokes += (f"M {x + width * 0.22:.0f} {top + cell * random.uniform(0, 0.2):.0f} h {width * 0.56:.0f} "
                    f"M {x + width * random.uniform(0.4, 0.6):.0f} {top:.0f} v {cell * 0.58:.0f} "
                    f"M {x + width * 0.24:.0f} {top + cell * random.uniform(0.5, 0.6):.0f} "
                    f"l {width * 0.5:.0f} {cell * random.uniform(-0.22, 0.02):.0f} ")
    box = f'<rect x="{x}" y="{y}" width="{width}" height="{height}" rx="8"'
    return (f'{box} fill="#080812"/><g stroke="{color}" stroke-width="{max(width * 0.07, 3):.1f}" '
            f'stroke-linecap="round">{box} fill="{color}" fill-opacity="0.2"/><path d="{strokes}" fill="none"/></g>')


walls, lights = "", ""
for side in (-60, 1990):
    for near, far in reversed(list(zip(DEPTHS, DEPTHS[1:]))):
        shine = "".join(house(side, near, far))
        tone = random.choice(("#0d1024", "#120f22", "#0a1220"))
        walls += panel(side, random.uniform(-520, -160), 800, near, far, tone) + shine
        lights += shine
for side, lean in ((150, 130), (1830, -130)):  # Street lamps.
    for share in (0.0, 0.45, 0.68, 0.82):
        (x, y), foot, scale = toward(side, 190, share), toward(side, 850, share)[1], 1 - share
        head = (f'<ellipse cx="{x + lean * scale:.0f}" cy="{y - 26 * scale:.0f}" rx="{34 * scale + 3:.0f}" '
                f'ry="{10 * scale + 2:.0f}" fill="#ffe2b0"/>')
        walls += (f'<path d="M {x:.0f} {foot:.0f} V {y:.0f} q 0 {-30 * scale:.0f} {lean * scale:.0f} '
                  f'{-30 * scale:.0f}" stroke="#05060c" stroke-width="{9 * scale:.1f}" fill="none"/>{head}')
        lights += head
signs = "".join((sign(300, 250, 84, 240, "#ff2f7e", 4), sign(560, 380, 52, 130, "#22d8ff", 3),
                 sign(735, 450, 34, 80, "#ffb02e", 3), sign(1560, 200, 92, 270, "#22d8ff", 4),
                 sign(1345, 360, 60, 150, "#ff5136", 3), sign(1205, 460, 34, 78, "#b05cff", 3)))
cars = "".join(f'<circle cx="{VANISH[0] + dx}" cy="{VANISH[1] + 22}" r="{radius}" fill="{color}"/>'
               for dx, radius, color in ((-34, 6, "#fff2d0"), (-16, 6, "#fff2d0"), (26, 4, "#ff3030"), (40, 4, "#ff3030")))
shops = "".join(f'<linearGradient id="shop{i}" x1="0" y1="0" x2="0" y2="1"><stop offset="0" stop-color="{high}"/>'
                f'<stop offset="1" stop-color="{low}"/></linearGradient>'
                for i, (high, low) in enumerate((("#ffe0a8", "#8a5428"), ("#ffd08a", "#7a3c1c"),
                                                 ("#ffc0b0", "#7a3048"), ("#c8ecff", "#2c5a80"))))
mirrored = 'transform="translate(0 1330) scale(1 -0.9)"'
print(f'''<svg xmlns="http://www.w3.org/2000/svg" width="1920" height="1080">{shops}
<linearGradient id="sky" x1="0" y1="0" x2="0" y2="1"><stop offset="0" stop-color="#04050f"/>
  <stop offset="0.5" stop-color="#141233"/><stop offset="1" stop-color="#5a3566"/></linearGradient>
<linearGradient id="road" x1="0" y1="0" x2="0" y2="1">
  <stop offset="0" stop-color="#0a0a18" stop-opacity="0"/>
  <stop offset="1" stop-color="#02030a" stop-opacity="0.35"/></linearGradient>
<radialGradient id="mist"><stop offset="0" stop-color="#e08a9c" stop-opacity="0.55"/>
  <stop offset="1" stop-color="#5a3566" stop-opacity="0"/></radialGradient>
<filter id="bloom" x="0" y="0" width="1" height="1"><feGaussianBlur stdDeviation="22"/></filter>
<filter id="tube" x="0" y="0" width="1" height="1"><feGaussianBlur stdDeviation="5"/></filter>
<filter id="wet" x="0" y="0" width="1" height="1">
  <feGaussianBlur stdDeviation="4 26" result="soft"/>
  <feTurbulence type="fractalNoise" baseFrequency="0.02 0.11" numOctaves="3" seed="6"/>
  <feDisplacementMap in="soft" scale="46" xChannelSelector="R" yChannelSelector="G"/></filter>
<filter id="grit" x="0" y="0" width="1" height="1">
  <feTurbulence type="fractalNoise" baseFrequency="0.05 0.3" numOctaves="3" seed="2"/>
  <feColorMatrix values="0 0 0 0 0  0 0 0 0 0  0 0 0 0 0.03  0 0 0 3 -1.35"/></filter>
<clipPath id="ground"><path d="M -60 1090 V 800 L {VANISH[0]} {VANISH[1]} L 1990 800 V 1090 Z"/></clipPath>
<rect width="1920" height="640" fill="url(#sky)"/>{walls}
<ellipse cx="{VANISH[0]}" cy="{VANISH[1] - 10}" rx="330" ry="250" fill="url(#mist)"/>
<defs><g id="glow">{lights}{cars}{signs}</g></defs>
<g clip-path="url(#ground)"><rect width="1920" height="1080" fill="#0b0c1a"/>
  <ellipse cx="{VANISH[0]}" cy="600" rx="420" ry="420" fill="url(#mist)" opacity="0.7"/>
  <use href="#glow" {mirrored} filter="url(#bloom)" opacity="0.8"/>
  <g filter="url(#wet)"><use href="#glow" {mirrored}/></g>
  <rect width="1920" height="1080" filter="url(#grit)" opacity="0.35"/>
  <rect y="560" width="1920" height="520" fill="url(#road)"/></g>
{signs}{cars}<use href="#glow" filter="url(#tube)" style="mix-blend-mode:screen" opacity="0.8"/>
<use href="#glow" filter="url(#bloom)" style="mix-blend-mode:screen"/>
<ellipse cx="{VANISH[0]}" cy="{VANISH[1]}" rx="300" ry="150" fill="url(#mist)"/></svg>''')
