#!/usr/bin/env bash
# Builds, and renders with the effect itself the thumbnails of presets: of those named, otherwise of
# all that library/thumbnails/cuts.txt lists. Needs what scripts/install_dependencies.sh installs.
#
#   scripts/render_thumbnails.sh [PRESET...]
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/effect_pictures.sh
cmake --preset release >/dev/null
cmake --build --preset release -j "$(nproc)" --target brisel

# drawThumbnail PRESET SCENE FRAME LEFT TOP WIDTH
drawThumbnail() {
  drawFrame "library/thumbnails/$2.toml" "$3" "$6:$(($6 * 65 / 88)):$4:$5" 88:65 \
    "library/Corvane/Drizzen/$1.bmp" --preset "$1"
}
export -f drawThumbnail

grep -v '^#' library/thumbnails/cuts.txt |
  awk -v wanted=" $* " 'wanted == "  " || index(wanted, " " $1 " ")' |
  xargs -P "$(nproc)" -L 1 bash -euc 'drawThumbnail "$@"' drawThumbnail
