#!/usr/bin/env bash
# Builds, renders the examples, and draws the pictures that README shows: docs/recipes.webp, three
# recipes in motion; and docs/looks.jpg, frames 30, 100 and 300 of every example and every preset at
# 1920 x 1080, of star presets a part where stars have room.
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/effect_pictures.sh
scripts/render_examples.sh

ffmpeg -nostdin -v error -y -ss 1.9 -t 2 -i out/wand_trail.mp4 -ss 2 -t 2 -i out/fireworks.mp4 \
  -ss 2 -t 2 -i out/magic_portal.mp4 -filter_complex "
    [0][1][2]concat=n=3,fps=20,scale=800:-2:flags=area" \
  -c:v libwebp_anim -quality 52 -compression_level 5 -loop 0 docs/recipes.webp

export cell=160:90

# drawCells NUMBER NAME SCENE PART [OPTION...]: the three frames of one look as numbered cells, the
# first with its name above.
drawCells() {
  local frame label=$2
  for frame in 30 100 300; do
    drawFrame "$3" $frame "$4" $cell "$scratch/$1.bmp" "${@:5}"
    ffmpeg -nostdin -v error -y -f image2 -c:v bmp -i "$scratch/$1.bmp" -vf "
      pad=160:106:0:16:0x303848,drawtext=text='$label':x=4:y=2:fontsize=11:fontcolor=white" \
      "$scratch/cell$(printf '%02d-%03d' "$1" $frame).png"
    label=
  done
}
export -f drawCells

# Every look as a line of drawCells' arguments. An example goes on beyond its last frame. At half of the
# full resolution looks are the same and cost a quarter, but for what is measured in rendered pixels:
# the circles of "Round" oscillations and single dots.
listLooks() {
  local scene name kind part scale number=0
  ln -s "$PWD/examples/media" "$scratch/media"
  for scene in examples/*.toml; do
    name=$(basename "$scene" .toml)
    sed '/^frames = /d; /^\[scene\]/a frames = 301' "$scene" > "$scratch/$name.toml"
    echo $((number++)) "$name" "$scratch/$name.toml" 1920:1080:0:0 --scale 1/2
  done
  grep -v '^#' library/thumbnails/cuts.txt | while read -r name kind part; do
    scene=emitter part=1920:1080:0:0
    if [ "$kind" != emitter ]; then
      scene=room part=480:270:720:405
    fi
    case $name in orbit | fireflies | pixel-dust) scale= ;; *) scale="--scale 1/2" ;; esac
    echo $((number++)) "$name" "library/thumbnails/$scene.toml" $part --preset "$name" $scale
  done
}

listLooks | xargs -P "$(nproc)" -L 1 bash -euc 'drawCells "$@"' drawCells
ffmpeg -v error -y -pattern_type glob -i "$scratch/cell*.png" \
  -vf "tile=12x18:padding=2:color=0x303848" -frames:v 1 -q:v 8 docs/looks.jpg
