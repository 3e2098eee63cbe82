#!/usr/bin/env bash
# Prints how long clips of 1920x1080 take on this machine, the least of several runs: to H.264, as a
# multiple of ffmpeg's own transcode by the same conversions and settings, with the default stars and
# with none; and to PNG, with one job as a multiple of all. Wants an idle machine and room in memory.
#
#   scripts/measure_clips.sh [FRAMES [RUNS]]
set -euo pipefail
cd "$(dirname "$0")/.."
brisel=$PWD/build/release/bin/brisel
media=$PWD/examples/media
frames=${1:-100}
runs=${2:-3}

work=$(mktemp -d -p /dev/shm)
trap 'rm -rf "$work"' EXIT
cd "$work"

# A little noise, as cameras have it.
ffmpeg -v error -stream_loop -1 -i "$media/dusk.mp4" -an -frames:v "$frames" -pix_fmt yuv420p \
  -vf scale=1920:1080:flags=bicubic,noise=alls=4:allf=t -c:v libx264 -crf 18 clip.mp4
printf '[scene]\ninput = "clip.mp4"\n' >stars.toml
printf '[scene]\ninput = "clip.mp4"\n[params]\n"Intensity" = 0\n' >none.toml
printf '[scene]\nsize = [1920, 1080]\nframes = %d\n' "$frames" >alone.toml

rgb=zscale=w=1920:h=1080:filter=bicubic:matrix=gbr:range=full,format=gbrp
yuv=scale=flags=bicubic+accurate_rnd+full_chroma_int+full_chroma_inp:out_color_matrix=bt709:out_range=tv
tags=setparams=colorspace=bt709:color_primaries=bt709:color_trc=bt709:range=tv
transcode() {
  ffmpeg -v error -nostdin -y -i clip.mp4 -vf "$rgb,$yuv,$tags,format=yuv420p" -c:v libx264 \
    -preset veryfast -crf 15 -movflags +faststart out.mp4
}
render() {
  "$brisel" render "$1.toml" -o "$2" --overwrite --jobs "$3" 2>/dev/null
}

# Seconds of the fastest run.
TIMEFORMAT=%R
least() {
  for ((run = 0; run < runs; ++run)); do { time "$@" >&2; } 2>&1; done | sort -n | head -1
}
show() {
  awk -v name="$1" -v one="$2" -v other="$3" -v than="$4" \
    'BEGIN { printf "%-34s %6.2f s  %.2f x %s\n", name, one, one / other, than }'
}

all=$(nproc)
own=$(least transcode)
show "ffmpeg, clip to H.264" "$own" "$own" "itself"
show "clip to H.264, no stars" "$(least render none o.mp4 "$all")" "$own" "ffmpeg"
show "clip to H.264, default stars" "$(least render stars o.mp4 "$all")" "$own" "ffmpeg"
for scene in alone stars; do
  rm -f ./*.png
  show "PNG, one job, $scene" "$(least render $scene o_%d.png 1)" \
    "$(least render $scene o_%d.png "$all")" "$all jobs"
done
