"""Prints the plate of snow.toml as SVG: a village under snow at blue hour, its windows lit."""
import math
import random

random.seed(3)
WIDTH, HEIGHT = 1920, 1080
ROOF, PANES = "#8ea6d6", ["#ffd480", "#ffc05a", "#ffe0a4"]


def rect(x, y, width, height, fill):
    return f'<rect x="{x:.0f}" y="{y:.0f}" width="{width:.0f}" height="{height:.0f}" fill="{fill}"/>'


def hill(base, swell, phase, color):
    """A rounded snowy ridge from edge to edge."""
    def level(x):
        return base - swell * (math.sin(x * 0.0021 + phase) + 0.4 * math.sin(x * 0.0063 + phase * 3))
    points = " ".join(f"L {x} {level(x):.0f}" for x in range(-20, WIDTH + 40, 20))
    return f'<path d="M -20 {HEIGHT} {points} L {WIDTH + 40} {HEIGHT} Z" fill="{color}"/>'


def fir(x, foot, tall, color, snow):
    """A fir of five tiers, with snow on the left of each."""
    for tier in range(5):
        top, low = foot - tall * (1.02 - tier * 0.13), foot - tall * (0.66 - tier * 0.155)
        half = tall * (0.1 + 0.042 * tier)
        near, slope = half * 0.35, low - tall * 0.06
        left = f"M {x:.0f} {top:.0f} Q {x - near:.0f} {slope:.0f} {x - half:.0f} {low:.0f}"
        yield (f'<path d="{left} Q {x:.0f} {low + tall * 0.045:.0f} {x + half:.0f} {low:.0f} '
               f'Q {x + near:.0f} {slope:.0f} {x:.0f} {top:.0f} Z" fill="{color}"/>')
        yield (f'<path d="{left} Q {x - half * 0.3:.0f} {low - tall * 0.07:.0f} {x:.0f} {top:.0f} Z" '
               f'fill="{snow}" opacity="0.8"/>')


def firs(places, color, snow):
    return "".join(part for x, foot, tall in places for part in fir(x, foot, tall, color, snow))


def gable(x, y, width, height, fill):
    return f'<path d="M {x:.0f} {y:.0f} l {width / 2:.0f} {-height:.0f} l {width / 2:.0f} {height:.0f} Z" fill="{fill}"/>'


def house(x, foot, width, tone):
    """A gabled house under snow, and apart from it what shines: its windows, the snow before it."""
    tall, roof, size = width * 0.52, width * 0.46, width * 0.15
    top = foot - tall
    walls = (rect(x, top, width, tall + 6, tone)
             + rect(x + width * 0.68, top - roof * 0.95, width * 0.1, roof * 0.7, tone)
             + gable(x - width * 0.1, top + 4, width * 1.2, roof + 4, ROOF)
             + gable(x + 4, top + 5, width - 8, roof * 0.72 + 5, tone))
    lights = (f'<ellipse cx="{x + width / 2:.0f}" cy="{foot + width * 0.1:.0f}" rx="{width * 0.75:.0f}" '
              f'ry="{width * 0.14:.0f}" fill="url(#pool)"/>')
    for column in (0.16, 0.43, 0.7):
        if random.random() < 0.88:
            left, up, high = x + width * column, foot - tall * 0.62, size * 1.2
            lights += rect(left, up, size, high, random.choice(PANES))
            lights += (f'<path d="M {left + size / 2:.0f} {up:.0f} v {high:.0f} M {left:.0f} {up + high * 0.46:.0f} '
                       f'h {size:.0f}" stroke="#6a3c1c" stroke-width="{size * 0.09:.1f}"/>')
    if random.random() < 0.7:
        lights += (f'<circle cx="{x + width / 2:.0f}" cy="{top - roof * 0.2:.0f}" r="{size * 0.36:.0f}" '
                   f'fill="#ffc766"/>')
    return walls, lights


def among(*ranges):
    """A place for a tree in one of the ranges across the picture."""
    return random.uniform(*random.choice(ranges))


far = firs([(among((-20, 1940)), random.uniform(628, 668), random.uniform(40, 95)) for _ in range(210)],
           "#24386a", "#5a76b4")
middle = firs([(among((-20, 560), (1330, 1940)), random.uniform(735, 770), random.uniform(110, 190))
               for _ in range(46)], "#142348", "#6480bc")
near = firs([(x, 1050 + random.uniform(-20, 30), tall)
             for x, tall in ((40, 560), (215, 380), (1880, 620), (1730, 430), (1590, 300), (-60, 420))],
            "#081229", "#4c659e")
back_row = [(x, random.uniform(710, 790), random.uniform(84, 128)) for x in range(420, 1500, 104)]
front_row = [(560, 872, 150), (800, 900, 176), (1180, 884, 160), (1390, 850, 140)]
built = [house(*place, random.choice(("#1b2546", "#221f3e", "#18233f")))
         for place in sorted(back_row, key=lambda place: place[1]) + front_row]
houses = "".join(walls + lights for walls, lights in built)
bell = '<rect x="1027" y="590" width="16" height="30" rx="8" fill="#ffd27a"/><circle cx="1035" cy="668" r="9" fill="#ffd88c"/>'
lights = "".join(lights for _, lights in built) + bell
print(f'''<svg xmlns="http://www.w3.org/2000/svg" width="1920" height="1080">
<linearGradient id="sky" x1="0" y1="0" x2="0" y2="1">
  <stop offset="0" stop-color="#081430"/><stop offset="0.32" stop-color="#17306a"/>
  <stop offset="0.52" stop-color="#41599c"/><stop offset="0.6" stop-color="#8a7fae"/></linearGradient>
<radialGradient id="pool"><stop offset="0" stop-color="#ffb45a" stop-opacity="0.5"/>
  <stop offset="1" stop-color="#ffb45a" stop-opacity="0"/></radialGradient>
<linearGradient id="dusk" x1="0" y1="0" x2="0" y2="1">
  <stop offset="0.72" stop-color="#050b20" stop-opacity="0"/>
  <stop offset="1" stop-color="#050b20" stop-opacity="0.7"/></linearGradient>
<filter id="bloom" x="0" y="0" width="1" height="1"><feGaussianBlur stdDeviation="16"/></filter>
<filter id="soft" x="0" y="0" width="1" height="1"><feGaussianBlur stdDeviation="2.5"/></filter>
<filter id="haze" x="0" y="0" width="1" height="1"><feGaussianBlur stdDeviation="1.2"/></filter>
<filter id="cloud" x="0" y="0" width="1" height="1">
  <feTurbulence type="fractalNoise" baseFrequency="0.0016 0.006" numOctaves="5" seed="8"/>
  <feColorMatrix values="0 0 0 0 0.45  0 0 0 0 0.52  0 0 0 0 0.8  0 0 0 1.5 -0.62"/></filter>
<rect width="1920" height="1080" fill="url(#sky)"/>
<rect width="1920" height="640" filter="url(#cloud)" opacity="0.5"/>
{hill(560, 70, 0.4, "#3a5090")}{hill(610, 40, 2.2, "#31477f")}<g filter="url(#haze)">{far}</g>
{hill(700, 22, 4.0, "#5a74b2")}{middle}{hill(790, 14, 1.1, "#4d68a8")}
<path d="M 1010 740 V 560 L 1035 440 L 1060 560 V 740 Z" fill="#1a2444"/>
<path d="M 1010 560 L 1035 440 L 1038 560 Z" fill="#8aa2d4"/>{bell}{houses}
<rect width="1920" height="1080" fill="url(#dusk)"/>
<g filter="url(#bloom)" style="mix-blend-mode:screen">{lights}</g>
<g filter="url(#soft)">{hill(1010, 18, 3.0, "#101d40")}{near}</g></svg>''')
