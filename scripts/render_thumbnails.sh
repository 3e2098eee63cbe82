#!/usr/bin/env bash
# Builds, and renders with the effect itself the thumbnails of presets: of those named, otherwise of
# all that library/thumbnails/cuts.txt lists. Needs what scripts/install_dependencies.sh installs.
#
#   scripts/render_thumbnails.sh [PRESET...]
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/preset_pictures.sh
buildEffect

# drawThumbnail PRESET SCENE FRAME LEFT TOP WIDTH
drawThumbnail() {
  drawPreset "library/thumbnails/$2.toml" "$1" "$3" "$6:$(($6 * 65 / 88)):$4:$5" 88:65 \
    "library/Corvane/Drizzen/$1.bmp"
}
export -f drawThumbnail

grep -v '^#' library/thumbnails/cuts.txt |
  awk -v wanted=" $* " 'wanted == "  " || index(wanted, " " $1 " ")' |
  xargs -P "$(nproc)" -L 1 bash -euc 'drawThumbnail "$@"' drawThumbnail
