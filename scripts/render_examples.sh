#!/usr/bin/env bash
# Installs what is missing, builds, and renders every example scene into out/: a clip and a still of
# each, and one contact sheet of all.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/install_dependencies.sh

cmake --preset release >/dev/null
cmake --build --preset release -j "$(nproc)" --target brisel module
brisel=build/release/bin/brisel

mkdir -p out
for scene in examples/*.toml; do
  name=$(basename "$scene" .toml)
  clip=out/$name.mp4
  # A clip that is newer than its scene and the module is still good.
  if [ "$clip" -nt "$scene" ] && [ "$clip" -nt build/release/bin/VellixDrizzen_64.AEX ]; then
    continue
  fi
  "$brisel" render "$scene" -o "$clip" --overwrite
  "$brisel" render "$scene" -o "out/$name.png" --frames 60-60 --overwrite
done
"$brisel" sheet examples/*.toml -o out/examples.png --overwrite
echo "Clips, stills and the contact sheet are in out/; start with out/examples.png."
