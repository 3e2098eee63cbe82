# For scripts that draw presets with the effect itself. Sourced; the working folder is the
# repository's root.

scratch=$(mktemp -d)  # gone when the script ends
export scratch
trap 'rm -rf "$scratch"' EXIT

buildEffect() {
  cmake --preset release >/dev/null
  cmake --build --preset release -j "$(nproc)" --target brisel
}

# drawPreset SCENE PRESET FRAME WIDTH:HEIGHT:LEFT:TOP SIZE FILE: writes that part of a frame of
# 1920 x 1080 pixels over one backdrop, reduced in linear light, so that small lights stay as bright
# as they are seen in the frame.
drawPreset() {
  local frame=$scratch/$2-$3.png
  build/release/bin/brisel render "$1" --preset "$2" --frames "$3-$3" -o "$frame" \
    >"$frame.log" 2>&1 || { cat "$frame.log" >&2; return 1; }
  local linear="'maxval*pow(val/maxval,2.2)'" gamma="'maxval*pow(val/maxval,1/2.2)'"
  ffmpeg -nostdin -v error -y -f lavfi -i "color=0x080a14:s=1920x1080,format=gbrp" -i "$frame" \
    -filter_complex "
      [0][1]overlay=format=gbrp,crop=$4,format=gbrp16,
      lutrgb=r=$linear:g=$linear:b=$linear,scale=$5:flags=lanczos+accurate_rnd,format=gbrp16,
      lutrgb=r=$gamma:g=$gamma:b=$gamma" \
    -frames:v 1 -update 1 -pix_fmt bgr24 "$6"
}
export -f drawPreset
