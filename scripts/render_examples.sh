#!/usr/bin/env bash
# Installs what is missing, builds, and renders every example scene into out/: a clip of each, and one
# contact sheet of frames out of the clips. What is newer than everything it is made from stays.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/install_dependencies.sh

cmake --preset release >/dev/null
cmake --build --preset release -j "$(nproc)" --target brisel
bin=build/release/bin

# Whether OUTPUT is there and nothing among the other arguments is newer.
isFresh() {
  local output=$1 source
  [ -e "$output" ] || return 1
  for source in "${@:2}"; do
    [ "$source" -nt "$output" ] && return 1
  done
  return 0
}

# writeRow CLIP PICTURE: the middles of five equal parts of the clip side by side, under its name.
writeRow() {
  local frames
  frames=$(ffprobe -v error -select_streams v -show_entries stream=nb_frames -of csv=p=0 "$1")
  ffmpeg -nostdin -v error -y -i "$1" -vf "
    select='gt(floor(5*n/$frames+0.5),floor(5*(n-1)/$frames+0.5))',scale=384:-2:flags=area,
    tile=5x1:padding=2,pad=iw:ih+20:0:20,
    drawtext=text='$(basename "$1" .mp4)':x=4:y=3:fontsize=14:fontcolor=white" \
    -frames:v 1 -update 1 "$2"
}

# renderScene SCENE: a clip of its first four seconds, unless it is fresh; ends with one line about it.
renderScene() {
  local clip
  clip=out/$(basename "$1" .toml).mp4
  isFresh "$clip" "$1" examples/media/* "$bin/brisel" "$bin/VellixDrizzen_64.AEX" ||
    "$bin/brisel" render "$1" -o "$clip" --frames 0-99 --overwrite 2>&1 | tail -n 1
}
export bin
export -f isFresh renderScene

# As many at a time as there are processors: one clip alone does not keep two of them busy.
mkdir -p out
printf '%s\0' examples/*.toml |
  xargs -0 -P "$(nproc)" -n 1 bash -euo pipefail -c 'renderScene "$@"' renderScene
clips=(examples/*.toml)
clips=("${clips[@]/#examples/out}")
clips=("${clips[@]/%.toml/.mp4}")

if ! isFresh out/examples.png "${clips[@]}"; then
  scratch=$(mktemp -d)
  trap 'rm -rf "$scratch"' EXIT
  for i in "${!clips[@]}"; do
    writeRow "${clips[i]}" "$scratch/$(printf '%03d' "$i").png"
  done
  ffmpeg -nostdin -v error -y -i "$scratch/%03d.png" -vf "tile=1x${#clips[@]}" -frames:v 1 -update 1 \
    out/examples.png
fi
echo "The clips and a contact sheet of them are in out/; start with out/examples.png."
