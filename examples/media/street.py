"""Prints the plate of rain.toml as SVG: a street at night, its shops and signs mirrored in wet asphalt."""
import random

random.seed(21)
WIDTH, KERB, VANISH = 1920, 760, (1010, 560)
NEON = ["#ff2f7e", "#22d8ff", "#ffb02e", "#a04cff", "#2cff9a", "#ff5136"]


def toward(x, y, t):
    """The point a share t of the way from (x, y) to the vanishing point."""
    return x + (VANISH[0] - x) * t, y + (VANISH[1] - y) * t


def quad(x, high, low, near, far, color, extra=""):
    """A piece of a wall that runs along the street on the side x, between two depths."""
    points = [toward(x, high, near), toward(x, high, far), toward(x, low, far), toward(x, low, near)]
    return f'<path d="M {" L ".join(f"{px:.0f} {py:.0f}" for px, py in points)} Z" fill="{color}" {extra}/>'


def block(x, near, far, roof):
    """A house: dark wall, some lit rooms, a shop window at street level and its neon sign."""
    wall, light = [quad(x, roof, 800, near, far, random.choice(("#0d1024", "#120f22", "#0a1220")))], []
    glow, width = random.choice(NEON), far - near
    shop = f"url(#shop{random.randrange(4)})"
    light.append(quad(x, 585, 775, near + width * 0.1, far - width * 0.12, shop))
    for i in range(1, 5):  # Mullions and goods in the window.
        at = near + width * (0.1 + 0.78 * i / 5)
        light.append(quad(x, 585, 775, at, at + width * 0.012, "#20140e"))
        light.append(quad(x, random.uniform(660, 720), 775, at + width * 0.03, at + width * 0.1, "#3a2418", 'opacity="0.7"'))
    light.append(quad(x, 545, 572, near + width * 0.06, far - width * 0.1, glow))
    for floor in range(6):
        for room in range(7):
            if random.random() < 0.2:
                at, up = near + width * (0.1 + room * 0.12), 460 - floor * 105
                if up - 62 > roof:
                    light.append(quad(x, up - 56, up, at, at + width * 0.06, random.choice(("#ffc878", "#ffdca4", "#9cc8ff")), f'opacity="{random.uniform(0.3, 0.8):.2f}"'))
    return wall, light


def sign(x, y, w, h, color, bars):
    """A neon sign that hangs over the pavement: a frame and strokes like writing."""
    strokes, cell = "", h / bars
    for i in range(bars):  # In every cell three strokes, as of a character.
        top = y + cell * (i + 0.22)
        strokes += (f'<path d="M {x + w * 0.22:.0f} {top + cell * random.uniform(0, 0.2):.0f} h {w * 0.56:.0f} M {x + w * random.uniform(0.4, 0.6):.0f} {top:.0f} '
                    f'v {cell * 0.58:.0f} M {x + w * 0.24:.0f} {top + cell * random.uniform(0.5, 0.6):.0f} l {w * 0.5:.0f} {cell * random.uniform(-0.22, 0.02):.0f}"/>')
    return (f'<rect x="{x}" y="{y}" width="{w}" height="{h}" rx="8" fill="#080812"/><g stroke="{color}" stroke-width="{max(w * 0.07, 3):.1f}" fill="none" stroke-linecap="round"><rect x="{x}" y="{y}" width="{w}" height="{h}" rx="8"/>{strokes}</g>'
            f'<rect x="{x}" y="{y}" width="{w}" height="{h}" rx="8" fill="{color}" opacity="0.2"/>')


walls, lights, depth = [], [], [(-0.55, 0.0), (0.0, 0.3), (0.3, 0.5), (0.5, 0.64), (0.64, 0.74), (0.74, 0.82), (0.82, 0.88)]
for side in (-60, 1990):
    for near, far in reversed(depth):
        wall, light = block(side, near, far, random.uniform(-520, -160))
        walls += wall + light
        lights += light
signs = [sign(300, 250, 84, 240, "#ff2f7e", 4), sign(560, 380, 52, 130, "#22d8ff", 3), sign(735, 450, 34, 80, "#ffb02e", 3),
         sign(1560, 200, 92, 270, "#22d8ff", 4), sign(1345, 360, 60, 150, "#ff5136", 3), sign(1205, 460, 34, 78, "#b05cff", 3)]
for side, lean in ((150, 1), (1830, -1)):
    for t in (0.0, 0.45, 0.68, 0.82):
        (x, y), (_, foot) = toward(side, 190, t), toward(side, 850, t)
        arm = lean * 130 * (1 - t)
        walls.append(f'<path d="M {x:.0f} {foot:.0f} V {y:.0f} q 0 {-30 * (1 - t):.0f} {arm:.0f} {-30 * (1 - t):.0f}" stroke="#05060c" stroke-width="{9 * (1 - t):.1f}" fill="none"/>')
        lights.append(f'<ellipse cx="{x + arm:.0f}" cy="{y - 26 * (1 - t):.0f}" rx="{34 * (1 - t) + 3:.0f}" ry="{10 * (1 - t) + 2:.0f}" fill="#ffe2b0"/>')
lights += [f'<circle cx="{VANISH[0] + dx}" cy="{VANISH[1] + 22}" r="{r}" fill="{c}"/>' for dx, r, c in ((-34, 6, "#fff2d0"), (-16, 6, "#fff2d0"), (26, 4, "#ff3030"), (40, 4, "#ff3030"))]
walls += lights[-12:]  # The lamps and the cars, which the houses do not hold.
shops = "".join(f'<linearGradient id="shop{i}" x1="0" y1="0" x2="0" y2="1"><stop offset="0" stop-color="{light}"/><stop offset="1" stop-color="{low}"/></linearGradient>'
                for i, (light, low) in enumerate((("#ffe0a8", "#8a5428"), ("#ffd08a", "#7a3c1c"), ("#ffc0b0", "#7a3048"), ("#c8ecff", "#2c5a80"))))
town, glow = "".join(walls), "".join(lights + signs)
print(f'''<svg xmlns="http://www.w3.org/2000/svg" width="1920" height="1080">{shops}
<linearGradient id="sky" x1="0" y1="0" x2="0" y2="1"><stop offset="0" stop-color="#04050f"/><stop offset="0.5" stop-color="#141233"/><stop offset="1" stop-color="#5a3566"/></linearGradient>
<linearGradient id="road" x1="0" y1="0" x2="0" y2="1"><stop offset="0" stop-color="#0a0a18" stop-opacity="0"/><stop offset="1" stop-color="#02030a" stop-opacity="0.35"/></linearGradient>
<radialGradient id="mist"><stop offset="0" stop-color="#e08a9c" stop-opacity="0.55"/><stop offset="1" stop-color="#5a3566" stop-opacity="0"/></radialGradient>
<filter id="bloom" x="0" y="0" width="1" height="1"><feGaussianBlur stdDeviation="22"/></filter>
<filter id="tube" x="0" y="0" width="1" height="1"><feGaussianBlur stdDeviation="5"/></filter>
<filter id="wet" x="0" y="0" width="1" height="1"><feGaussianBlur stdDeviation="4 26" result="soft"/>
<feTurbulence type="fractalNoise" baseFrequency="0.02 0.11" numOctaves="3" seed="6"/><feDisplacementMap in="soft" scale="46" xChannelSelector="R" yChannelSelector="G"/></filter>
<filter id="grit" x="0" y="0" width="1" height="1"><feTurbulence type="fractalNoise" baseFrequency="0.05 0.3" numOctaves="3" seed="2"/>
<feColorMatrix values="0 0 0 0 0  0 0 0 0 0  0 0 0 0 0.03  0 0 0 3 -1.35"/></filter>
<defs><g id="glow">{glow}</g><g id="scene"><rect width="1920" height="640" fill="url(#sky)"/><g>{town}</g><g>{"".join(signs)}</g>
<ellipse cx="{VANISH[0]}" cy="{VANISH[1] - 10}" rx="330" ry="250" fill="url(#mist)"/></g>
<clipPath id="ground"><path d="M -60 1090 V 800 L {VANISH[0]} {VANISH[1]} L 1990 800 V 1090 Z"/></clipPath></defs>
<use href="#scene"/><g clip-path="url(#ground)"><rect width="1920" height="1080" fill="#0b0c1a"/><ellipse cx="{VANISH[0]}" cy="600" rx="420" ry="420" fill="url(#mist)" opacity="0.7"/>
<use href="#glow" transform="translate(0 1330) scale(1 -0.9)" filter="url(#bloom)" opacity="0.8"/>
<g filter="url(#wet)"><use href="#glow" transform="translate(0 1330) scale(1 -0.9)"/></g>
<rect width="1920" height="1080" filter="url(#grit)" opacity="0.35"/><rect y="560" width="1920" height="520" fill="url(#road)"/></g>
<use href="#glow" filter="url(#tube)" style="mix-blend-mode:screen" opacity="0.8"/><use href="#glow" filter="url(#bloom)" style="mix-blend-mode:screen"/>
<ellipse cx="{VANISH[0]}" cy="{VANISH[1]}" rx="300" ry="150" fill="url(#mist)"/>
</svg>''')
