#!/usr/bin/env bash
# Installs what is missing, builds, and renders every example scene into out/: a clip and a still of
# each, and one contact sheet of all. What is newer than everything it is made from stays.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/install_dependencies.sh

cmake --preset release >/dev/null
cmake --build --preset release -j "$(nproc)" --target brisel module
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

mkdir -p out
tools=("$bin/brisel" "$bin/VellixDrizzen_64.AEX")
for scene in examples/*.toml; do
  name=$(basename "$scene" .toml)
  sources=("$scene" "${tools[@]}" examples/media/*)
  isFresh "out/$name.mp4" "${sources[@]}" ||
    "$bin/brisel" render "$scene" -o "out/$name.mp4" --overwrite
  isFresh "out/$name.png" "${sources[@]}" ||
    "$bin/brisel" render "$scene" -o "out/$name.png" --frames 60-60 --overwrite
done
isFresh out/examples.png examples/*.toml examples/media/* "${tools[@]}" ||
  "$bin/brisel" sheet examples/*.toml -o out/examples.png --overwrite
echo "Clips, stills and the contact sheet are in out/; start with out/examples.png."
