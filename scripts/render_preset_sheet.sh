#!/usr/bin/env bash
# Builds, and shows every preset on one picture, docs/presets.jpg: frames 30, 100 and 300 of each at
# 1920 x 1080, of star presets a part where stars have room.
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/preset_pictures.sh
buildEffect
export cell=160:90

# drawCells NUMBER PRESET SCENE
drawCells() {
  local scene=emitter part=1920:1080:0:0 label frame
  if [ "$3" != emitter ]; then
    scene=room part=480:270:720:405
  fi
  for frame in 30 100 300; do
    drawPreset "library/thumbnails/$scene.toml" "$2" $frame $part $cell "$scratch/$2.bmp"
    label=
    [ $frame = 30 ] && label=$2
    ffmpeg -nostdin -v error -y -f image2 -c:v bmp -i "$scratch/$2.bmp" -vf "
      pad=160:106:0:16:0x303848,drawtext=text='$label':x=4:y=2:fontsize=11:fontcolor=white" \
      "$scratch/cell$(printf '%02d-%03d' "$1" $frame).png"
  done
}
export -f drawCells

grep -v '^#' library/thumbnails/cuts.txt | cat -n | awk '{ print $1, $2, $3 }' |
  xargs -P "$(nproc)" -L 1 bash -euc 'drawCells "$@"' drawCells

ffmpeg -v error -y -pattern_type glob -i "$scratch/cell*.png" \
  -vf "tile=12x14:padding=2:color=0x303848" -frames:v 1 -q:v 6 docs/presets.jpg
