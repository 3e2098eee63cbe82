"""Prints the plate of snow.toml as SVG: a village under snow at blue hour, its windows lit."""
import math
import random

random.seed(3)
WIDTH, HEIGHT = 1920, 1080


def hill(base, swell, phase, color):
    """A rounded snowy ridge from edge to edge."""
    points = " ".join(f"L {x} {base - swell * (math.sin(x * 0.0021 + phase) + 0.4 * math.sin(x * 0.0063 + phase * 3)):.0f}"
                      for x in range(-20, WIDTH + 40, 20))
    return f'<path d="M -20 {HEIGHT} {points} L {WIDTH + 40} {HEIGHT} Z" fill="{color}"/>'


def fir(x, foot, tall, color, snow):
    """A fir of five tiers, snow on its left slopes."""
    out = []
    for tier in range(5):
        top, low = foot - tall * (1.02 - tier * 0.13), foot - tall * (0.66 - tier * 0.155)
        half = tall * (0.1 + 0.042 * tier)
        out.append(f'<path d="M {x:.0f} {top:.0f} Q {x - half * 0.35:.0f} {low - tall * 0.06:.0f} {x - half:.0f} {low:.0f} '
                   f'Q {x:.0f} {low + tall * 0.045:.0f} {x + half:.0f} {low:.0f} Q {x + half * 0.35:.0f} {low - tall * 0.06:.0f} {x:.0f} {top:.0f} Z" fill="{color}"/>'
                   f'<path d="M {x:.0f} {top:.0f} Q {x - half * 0.35:.0f} {low - tall * 0.06:.0f} {x - half:.0f} {low:.0f} '
                   f'Q {x - half * 0.3:.0f} {low - tall * 0.07:.0f} {x:.0f} {top:.0f} Z" fill="{snow}" opacity="0.8"/>')
    return out


def house(x, foot, width, tone):
    """A gabled house: snow on roof and chimney, windows that glow, light on the snow before it."""
    tall, roof = width * 0.52, width * 0.46
    top = foot - tall
    out = [f'<rect x="{x:.0f}" y="{top:.0f}" width="{width:.0f}" height="{tall + 6:.0f}" fill="{tone}"/>'
           f'<rect x="{x + width * 0.68:.0f}" y="{top - roof * 0.95:.0f}" width="{width * 0.1:.0f}" height="{roof * 0.7:.0f}" fill="{tone}"/>'
           f'<path d="M {x - width * 0.1:.0f} {top + 4:.0f} L {x + width / 2:.0f} {top - roof:.0f} L {x + width * 1.1:.0f} {top + 4:.0f} Z" fill="#8ea6d6"/>'
           f'<path d="M {x + 4:.0f} {top + 5:.0f} L {x + width / 2:.0f} {top - roof * 0.72:.0f} L {x + width - 4:.0f} {top + 5:.0f} Z" fill="{tone}"/>']
    light = [f'<ellipse cx="{x + width / 2:.0f}" cy="{foot + width * 0.1:.0f}" rx="{width * 0.75:.0f}" ry="{width * 0.14:.0f}" fill="url(#pool)"/>']
    size = width * 0.15
    for column in (0.16, 0.43, 0.7):
        if random.random() < 0.88:
            left, up = x + width * column, foot - tall * 0.62
            light.append(f'<rect x="{left:.0f}" y="{up:.0f}" width="{size:.0f}" height="{size * 1.2:.0f}" fill="{random.choice(["#ffd480", "#ffc05a", "#ffe0a4"])}"/>'
                         f'<path d="M {left + size / 2:.0f} {up:.0f} v {size * 1.2:.0f} M {left:.0f} {up + size * 0.55:.0f} h {size:.0f}" stroke="#6a3c1c" stroke-width="{size * 0.09:.1f}"/>')
    if random.random() < 0.7:
        light.append(f'<circle cx="{x + width / 2:.0f}" cy="{top - roof * 0.2:.0f}" r="{size * 0.36:.0f}" fill="#ffc766"/>')
    return out, light


far = [tree for _ in range(210) for tree in fir(random.uniform(-20, 1940), random.uniform(628, 668), random.uniform(40, 95), "#24386a", "#5a76b4")]
mid = [tree for _ in range(46) for tree in fir(random.choice((random.uniform(-20, 560), random.uniform(1330, 1940))), random.uniform(735, 770), random.uniform(110, 190), "#142348", "#6480bc")]
near = [tree for x, tall in ((40, 560), (215, 380), (1880, 620), (1730, 430), (1590, 300), (-60, 420))
        for tree in fir(x, 1050 + random.uniform(-20, 30), tall, "#081229", "#4c659e")]
built = [house(x, foot, width, random.choice(("#1b2546", "#221f3e", "#18233f")))
         for x, foot, width in sorted(((x, 742 + 0.00016 * (x - 960) ** 2 * -1 + random.uniform(0, 60), random.uniform(84, 128))
                                       for x in range(420, 1500, 104)), key=lambda h: h[1])
         + [(560, 872, 150), (800, 900, 176), (1180, 884, 160), (1390, 850, 140)]]
houses = "".join(part for pair in built for kind in pair for part in kind)
lights = "".join(part for _, light in built for part in light)
church = ('<path d="M 1010 740 V 560 L 1035 440 L 1060 560 V 740 Z" fill="#1a2444"/><path d="M 1010 560 L 1035 440 L 1038 560 Z" fill="#8aa2d4"/>')
bell = '<rect x="1027" y="590" width="16" height="30" rx="8" fill="#ffd27a"/><circle cx="1035" cy="668" r="9" fill="#ffd88c"/>'
print(f'''<svg xmlns="http://www.w3.org/2000/svg" width="1920" height="1080">
<linearGradient id="sky" x1="0" y1="0" x2="0" y2="1"><stop offset="0" stop-color="#081430"/><stop offset="0.32" stop-color="#17306a"/>
<stop offset="0.52" stop-color="#41599c"/><stop offset="0.6" stop-color="#8a7fae"/></linearGradient>
<radialGradient id="pool"><stop offset="0" stop-color="#ffb45a" stop-opacity="0.5"/><stop offset="1" stop-color="#ffb45a" stop-opacity="0"/></radialGradient>
<linearGradient id="dusk" x1="0" y1="0" x2="0" y2="1"><stop offset="0.72" stop-color="#050b20" stop-opacity="0"/><stop offset="1" stop-color="#050b20" stop-opacity="0.7"/></linearGradient>
<filter id="bloom" x="0" y="0" width="1" height="1"><feGaussianBlur stdDeviation="16"/></filter>
<filter id="soft" x="0" y="0" width="1" height="1"><feGaussianBlur stdDeviation="2.5"/></filter>
<filter id="haze" x="0" y="0" width="1" height="1"><feGaussianBlur stdDeviation="1.2"/></filter>
<filter id="cloud" x="0" y="0" width="1" height="1"><feTurbulence type="fractalNoise" baseFrequency="0.0016 0.006" numOctaves="5" seed="8"/>
<feColorMatrix values="0 0 0 0 0.45  0 0 0 0 0.52  0 0 0 0 0.8  0 0 0 1.5 -0.62"/></filter>
<rect width="1920" height="1080" fill="url(#sky)"/><rect width="1920" height="640" filter="url(#cloud)" opacity="0.5"/>{hill(560, 70, 0.4, "#3a5090")}{hill(610, 40, 2.2, "#31477f")}
<g filter="url(#haze)">{"".join(far)}</g>{hill(700, 22, 4.0, "#5a74b2")}{"".join(mid)}{hill(790, 14, 1.1, "#4d68a8")}
<g>{church}{bell}{houses}</g><rect width="1920" height="1080" fill="url(#dusk)"/>
<g filter="url(#bloom)" style="mix-blend-mode:screen">{lights}{bell}</g>
<g filter="url(#soft)">{hill(1010, 18, 3.0, "#101d40")}{"".join(near)}</g></svg>''')
