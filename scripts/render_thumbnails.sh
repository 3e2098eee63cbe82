#!/usr/bin/env bash
# Builds, and renders with the effect itself the thumbnail of every preset that the library's index
# names: 88 x 65 pixels over a dark sky. Needs what scripts/install_dependencies.sh installs.
set -euo pipefail
cd "$(dirname "$0")/.."
cmake --preset release >/dev/null
cmake --build --preset release -j "$(nproc)" --target brisel module library

export brisel=build/release/bin/brisel scenes=library/thumbnails presets=library/Corvane/Drizzen
frames=$(mktemp -d)
export frames
trap 'rm -rf "$frames"' EXIT

# renderThumbnail SECTION PARAMETER-FILE IMAGE
renderThumbnail() {
  local name=${2%.txt} first last scene cut=null trails=null options=()
  case $1 in
    Emmiter)  # what moves leaves a trail, so that one picture shows where it goes
      scene=emitter first=104 last=120 trails=lagfun=decay=0.86 ;;
    Geometry)
      scene=star first=12 last=12 cut=crop=352:260 ;;
  esac
  if [ "$name" = pixel-dust ]; then  # a dot is one pixel at any size: many, and never reduced
    options=(--size 88x65 --set "Standard path=Whole field" --set "Intensity=16")
    cut=null
  fi
  "$brisel" render "$scenes/$scene.toml" --preset "$name" "${options[@]}" \
    --frames "$first-$last" -o "$frames/$name%04d.png" >"$frames/$name.log" 2>&1 ||
    { cat "$frames/$name.log" >&2; return 1; }
  ffmpeg -nostdin -v error -y \
    -f lavfi -i "color=s=88x65:d=1,format=gbrp,geq=r=18-14*Y/H:g=30-24*Y/H:b=62-46*Y/H" \
    -start_number "$first" -i "$frames/$name%04d.png" -filter_complex "
      [0]trim=end_frame=1,format=gbrap[sky];
      [1]$cut,format=gbrap,premultiply=inplace=1,scale=88:65:flags=area[stars];
      [sky][stars]overlay=alpha=premultiplied:format=gbrp,format=gbrp,$trails" \
    -update 1 -pix_fmt bgr24 "$presets/$3"
}
export -f renderThumbnail

# "SECTION FILE IMAGE" of every entry; the index's first line is a title.
tr -d '\r' <"$presets/Drizzen.prs" |
  awk 'NR == 1 || /^;/ { next } /^\[/ { section = substr($1, 2, length($1) - 2); next }
       NF == 2 { print section, $1, $2 }' |
  xargs -P "$(nproc)" -L 1 bash -euc 'renderThumbnail "$@"' renderThumbnail
