"""A golden title on dark velvet, as SVG: the plate of sparkling_title.toml. Nothing but the letters is
bright, so that the size of a star tells whether it lies on one. Needs the fonts of make_media.sh."""

import random

random.seed(21)

print("""<svg xmlns="http://www.w3.org/2000/svg" width="1920" height="1080">
<radialGradient id="velvet" cx="0.5" cy="0.46" r="0.72">
  <stop offset="0" stop-color="#240818"/><stop offset="0.45" stop-color="#14051a"/>
  <stop offset="1" stop-color="#030108"/></radialGradient>
<linearGradient id="gold" x1="0" y1="0" x2="0" y2="1">
  <stop offset="0.2" stop-color="#ffdc90"/><stop offset="0.48" stop-color="#d99a3a"/>
  <stop offset="0.52" stop-color="#8a4f16"/><stop offset="0.62" stop-color="#c88430"/>
  <stop offset="0.8" stop-color="#f2c060"/></linearGradient>
<radialGradient id="beam"><stop offset="0" stop-color="#ffb86a" stop-opacity="0.2"/>
  <stop offset="1" stop-color="#ff8a50" stop-opacity="0"/></radialGradient>
<filter id="bevel" filterUnits="userSpaceOnUse" x="0" y="0" width="1920" height="1080">
  <feGaussianBlur in="SourceAlpha" stdDeviation="5" result="height"/>
  <feSpecularLighting in="height" surfaceScale="9" specularConstant="1.1" specularExponent="22"
    lighting-color="#ffdc90" result="shine"><feDistantLight azimuth="235" elevation="48"/></feSpecularLighting>
  <feComposite in="shine" in2="SourceAlpha" operator="in" result="edge"/>
  <feComposite in="SourceGraphic" in2="edge" operator="arithmetic" k2="0.7" k3="0.55"/>
</filter>
<filter id="soft" filterUnits="userSpaceOnUse" x="0" y="0" width="1920" height="1080"><feGaussianBlur stdDeviation="22"/></filter>
<filter id="cloth" x="0" y="0" width="1" height="1">
  <feTurbulence type="fractalNoise" baseFrequency="0.009 0.0016" numOctaves="4" seed="14"/>
  <feColorMatrix values="0 0 0 0 0.55  0 0 0 0 0.12  0 0 0 0 0.3  0 0 0 2.4 -1.15"/>
</filter>
<rect width="1920" height="1080" fill="url(#velvet)"/>
<rect width="1920" height="1080" filter="url(#cloth)" opacity="0.2"/>
<ellipse cx="960" cy="500" rx="1000" ry="380" fill="url(#beam)"/>""")

for _ in range(90):  # dust out of focus, far behind the letters
    x, y, r = random.uniform(0, 1920), random.gauss(540, 300), random.choice((3, 5, 9, 16, 28))
    opacity = random.uniform(0.02, 0.08) * (1.2 if r < 10 else 0.7)
    print(f'<circle cx="{x:.0f}" cy="{y:.0f}" r="{r}" fill="#ffb060" opacity="{opacity:.3f}"/>')

print('<g filter="url(#soft)" font-family="EB Garamond" text-anchor="middle" opacity="0.5">'
      '<text x="988" y="612" font-size="384" letter-spacing="48" fill="#c86a20">BRISEL</text></g>')
print('<g filter="url(#bevel)" font-family="EB Garamond" text-anchor="middle" fill="url(#gold)">'
      '<text x="984" y="612" font-size="384" letter-spacing="48">BRISEL</text></g>')
print('<g font-family="EB Garamond" text-anchor="middle" fill="#b08c50">'
      '<text x="974" y="766" font-size="46" letter-spacing="28">STAR PARTICLES</text></g>')
for side in (-1, 1):  # a rule on both sides of the small line
    print(f'<path fill="#8a6a38" d="M{960 + side * 420} 749l{side * 250} 2l{-side * 250} 2Z"/>'
          f'<path fill="#c8a058" d="M{960 + side * 400 - 8} 751l8 -8l8 8l-8 8Z"/>')
print("</svg>")
