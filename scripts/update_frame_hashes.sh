#!/usr/bin/env bash
# Renews the hashes of the known frames. For every scene whose last frame changed, writes a picture
# to build/frames/difference: as a revision draws it (the last commit unless another is named), as
# the working tree draws it, and the difference of the two, 16 times as strong.
#
#   scripts/update_frame_hashes.sh [REVISION]
set -euo pipefail
cd "$(dirname "$0")/.."
revision=${1:-HEAD}
frames=$PWD/build/frames
rm -rf "$frames"
mkdir -p "$frames"/{before,after,difference}

# Builds the sources in $1 into $2 and renders the known frames into $3.
render() {
  cmake -S "$1" -B "$2" -G Ninja -DCMAKE_BUILD_TYPE=Release >/dev/null
  cmake --build "$2" --target plugin_tests -j "$(nproc)" >/dev/null
  BRISEL_UPDATE_HASHES=1 BRISEL_FRAMES_DIR=$3 "$2/bin/plugin_tests" --gtest_brief=1 \
    --gtest_filter='KnownFrames.*' >/dev/null
}

git worktree add --quiet --force --detach "$frames/source" "$revision"
trap 'git worktree remove --force "$frames/source"' EXIT
render "$frames/source" "$frames/build" "$frames/before"
render "$PWD" "$PWD/build/release" "$frames/after"

for after in "$frames"/after/*.ppm; do
  name=$(basename "$after" .ppm)
  before=$frames/before/$name.ppm
  if [[ -e $before ]] && ! cmp -s "$before" "$after"; then
    ffmpeg -v error -y -i "$before" -i "$after" -filter_complex \
      '[0]format=gbrp16,split[a][b];[1]format=gbrp16,split[c][d];
       [b][d]blend=all_mode=difference,lutrgb=r=16*val:g=16*val:b=16*val[e];
       [a][c][e]hstack=inputs=3' "$frames/difference/$name.png"
    echo "changed: build/frames/difference/$name.png"
  fi
done
git diff --stat -- tests/plugin/known_frames.txt
