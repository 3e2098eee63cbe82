#!/bin/sh
# Draws the pictures and the clip that the example scenes use. They are kept in the repository; run
# this only to change them. Needs ffmpeg with SVG support and the fonts of the Debian package
# fonts-ebgaramond.
set -eu

cd "$(dirname "$0")"
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
export LC_ALL=C

encode() { ffmpeg -v error -nostdin -y "$@"; }

# A title card on transparent, golden from light to dark.
title() {
  cat > "$work/title.svg" <<'SVG'
<svg xmlns="http://www.w3.org/2000/svg" width="1920" height="1080" viewBox="0 0 960 540">
  <linearGradient id="gold" x1="0" y1="0" x2="0" y2="1">
    <stop offset="0.25" stop-color="#fff4d6"/>
    <stop offset="0.55" stop-color="#f2c063"/>
    <stop offset="0.85" stop-color="#8a5520"/>
  </linearGradient>
  <g font-family="EB Garamond" text-anchor="middle">
    <text x="492" y="318" font-size="168" letter-spacing="22" fill="url(#gold)">BRISEL</text>
    <text x="487" y="374" font-size="25" letter-spacing="14" fill="#c9b48a">STAR PARTICLES</text>
  </g>
</svg>
SVG
  encode -i "$work/title.svg" -frames:v 1 -pix_fmt rgba title.png
}

# An emblem on transparent: a star inside a tilted orbit, which is dim at one end.
logo() {
  cat > "$work/logo.svg" <<'SVG'
<svg xmlns="http://www.w3.org/2000/svg" width="1920" height="1080" viewBox="0 0 960 540">
  <linearGradient id="sweep">
    <stop offset="0" stop-color="#2a1c8c"/>
    <stop offset="0.3" stop-color="#7a35d8"/>
    <stop offset="0.65" stop-color="#ff4f9a"/>
    <stop offset="1" stop-color="#ffc46b"/>
  </linearGradient>
  <radialGradient id="core">
    <stop offset="0" stop-color="#ffffff"/>
    <stop offset="0.5" stop-color="#ffe9b0"/>
    <stop offset="1" stop-color="#ff9a4d"/>
  </radialGradient>
  <path transform="rotate(-24 480 270)" fill="url(#sweep)" fill-rule="evenodd"
    d="M 130 270 A 350 140 0 1 0 830 270 A 350 140 0 1 0 130 270 Z
       M 180 262 A 308 104 0 1 0 796 262 A 308 104 0 1 0 180 262 Z"/>
  <path fill="url(#core)"
    d="M 480 56 Q 500 246 648 270 Q 500 294 480 484 Q 460 294 312 270 Q 460 246 480 56 Z"/>
</svg>
SVG
  encode -i "$work/logo.svg" -frames:v 1 -pix_fmt rgba logo.png
}

# A ridge line as SVG path data: folded waves, which give sharp peaks and no repetition.
ridge() {  # WIDTH HEIGHT BASE ROUGHNESS PHASE
  awk -v w="$1" -v h="$2" -v base="$3" -v rough="$4" -v phase="$5" 'BEGIN {
    printf "M 0 %d", h
    for (x = 0; x <= w; x += 3) {
      y = base
      scale = 1
      for (k = 0; k < 7; k++) {
        wave = sin(x * 0.0058 * scale + phase * (k + 1) * (k + 2))
        y -= rough * (1 - (wave < 0 ? -wave : wave)) / scale
        scale *= 1.83
      }
      printf " L %d %.1f", x, y
    }
    printf " L %d %d Z", w, h
  }'
}

# A row of conifers along the lower edge.
conifers() {  # WIDTH HEIGHT
  awk -v w="$1" -v h="$2" 'BEGIN {
    srand(7)
    for (x = -10; x < w + 10; x += 5 + 13 * rand()) {
      tall = 26 + 64 * rand() * (0.55 + 0.45 * sin(x * 0.011))
      half = tall * (0.13 + 0.05 * rand())
      foot = h - 20 + 10 * rand()
      printf "M %.1f %d L %.1f %.1f", x - half, h, x - half, foot
      for (k = 0; k < 5; k++) {
        up = foot - tall * (k + 1) / 5
        out = half * (1 - k / 5)
        printf " L %.1f %.1f L %.1f %.1f", x - out, up + tall * 0.16, x - out * 0.45, up
      }
      printf " L %.1f %.1f", x, foot - tall * 1.06
      for (k = 4; k >= 0; k--) {
        up = foot - tall * (k + 1) / 5
        out = half * (1 - k / 5)
        printf " L %.1f %.1f L %.1f %.1f", x + out * 0.45, up, x + out, up + tall * 0.16
      }
      printf " L %.1f %.1f L %.1f %d Z ", x + half, foot, x + half, h
    }
  }'
}

# A camera gliding past mountains at dusk: layers that move the faster the nearer they are.
dusk() {
  cat > "$work/sky.svg" <<SVG
<svg xmlns="http://www.w3.org/2000/svg" width="2080" height="1080" viewBox="0 0 1040 540">
  <linearGradient id="sky" x1="0" y1="0" x2="0" y2="1">
    <stop offset="0" stop-color="#050818"/>
    <stop offset="0.4" stop-color="#131c47"/>
    <stop offset="0.6" stop-color="#46356f"/>
    <stop offset="0.74" stop-color="#a8536a"/>
    <stop offset="0.84" stop-color="#ee9a62"/>
  </linearGradient>
  <radialGradient id="glow"><stop offset="0" stop-color="#ffc890" stop-opacity="0.6"/>
    <stop offset="1" stop-color="#e07a70" stop-opacity="0"/></radialGradient>
  <linearGradient id="fade" x1="0" y1="0" x2="0" y2="1">
    <stop offset="0.1" stop-color="#000"/><stop offset="0.7" stop-color="#fff"/>
  </linearGradient>
  <mask id="low"><rect width="1040" height="540" fill="url(#fade)"/></mask>
  <filter id="clouds" x="0" y="0" width="1" height="1">
    <feTurbulence type="fractalNoise" baseFrequency="0.003 0.021" numOctaves="5" seed="23"/>
    <feColorMatrix values="0 0 0 0 0.95  0 0 0 0 0.55  0 0 0 0 0.5  0 0 0 3 -1.45"/>
  </filter>
  <rect width="1040" height="540" fill="url(#sky)"/>
  <circle cx="690" cy="440" r="270" fill="url(#glow)"/>
  <g mask="url(#low)"><rect width="1040" height="540" filter="url(#clouds)" opacity="0.8"/></g>
</svg>
SVG
  encode -i "$work/sky.svg" -frames:v 1 "$work/sky.png"
  layer far 1120 '#4a3058' "$(ridge 1120 540 462 44 0.9)"
  layer mid 1200 '#251b3c' "$(ridge 1200 540 500 38 2.3)"
  layer near 1320 '#0b0a1c' "$(conifers 1320 540)"
  encode -loop 1 -i "$work/sky.png" -loop 1 -i "$work/far.png" -loop 1 -i "$work/mid.png" \
    -loop 1 -i "$work/near.png" -filter_complex "
      [0]crop=1920:1080:'20*t':0[sky];
      [sky][1]overlay=x='-44*t':eval=frame[a];
      [a][2]overlay=x='-92*t':eval=frame[b];
      [b][3]overlay=x='-168*t':eval=frame,
      scale=out_color_matrix=bt709:out_range=tv,format=yuv420p" \
    -t 4 -r 25 -c:v libx264 -preset veryslow -crf 26 -colorspace bt709 -color_primaries bt709 \
    -color_trc bt709 -color_range tv -movflags +faststart dusk.mp4
}

layer() {  # NAME WIDTH COLOR PATH
  printf '<svg xmlns="http://www.w3.org/2000/svg" width="%d" height="1080" viewBox="0 0 %d 540">
    <path fill="%s" d="%s"/></svg>' $(($2 * 2)) "$2" "$3" "$4" > "$work/$1.svg"
  encode -i "$work/$1.svg" -frames:v 1 "$work/$1.png"
}

# A cloud of colored gas, to take star colors from.
nebula() {
  cat > "$work/nebula.svg" <<'SVG'
<svg xmlns="http://www.w3.org/2000/svg" width="1920" height="1080" viewBox="0 0 960 540">
  <filter id="rose" x="0" y="0" width="1" height="1">
    <feTurbulence type="fractalNoise" baseFrequency="0.0045 0.0075" numOctaves="6" seed="5"/>
    <feColorMatrix values="0 0 0 0 1  0 0.9 0 0 -0.22  0 0 0 0 0.55  0 0 0 4.2 -1.75"/>
  </filter>
  <filter id="teal" x="0" y="0" width="1" height="1">
    <feTurbulence type="fractalNoise" baseFrequency="0.0038 0.0065" numOctaves="6" seed="31"/>
    <feColorMatrix values="0 0 0 0 0.1  0 0.6 0 0 0.35  0 0 0 0 1  0 0 0 4.2 -1.8"/>
  </filter>
  <radialGradient id="core" cx="0.52" cy="0.5" r="0.42">
    <stop offset="0" stop-color="#ffd9a0" stop-opacity="0.75"/>
    <stop offset="0.45" stop-color="#ff8a5c" stop-opacity="0.3"/>
    <stop offset="1" stop-color="#ff8a5c" stop-opacity="0"/></radialGradient>
  <radialGradient id="veil" r="0.72"><stop offset="0.2" stop-color="#03030c" stop-opacity="0"/>
    <stop offset="1" stop-color="#03030c" stop-opacity="0.95"/></radialGradient>
  <rect width="960" height="540" fill="#060614"/>
  <rect width="960" height="540" filter="url(#teal)" opacity="0.75"/>
  <rect width="960" height="540" filter="url(#rose)" opacity="0.7"/>
  <rect width="960" height="540" fill="url(#core)"/>
  <rect width="960" height="540" fill="url(#veil)"/>
</svg>
SVG
  encode -i "$work/nebula.svg" -frames:v 1 -q:v 4 nebula.jpg
}

# The plates of the recipes: NAME.py prints a picture as SVG, which becomes NAME.jpg.
plates() {
  for script in *.py; do
    name=${script%.py}
    python3 "$script" > "$work/$name.svg"
    encode -i "$work/$name.svg" -frames:v 1 -vf format=yuvj420p -q:v 4 "$name.jpg"
  done
}

title
logo
dusk
nebula
plates
