# For scripts that draw pictures with the effect itself. Sourced; the working folder is the
# repository's root.

scratch=$(mktemp -d)  # gone when the script ends
export scratch
trap 'rm -rf "$scratch"' EXIT

# drawFrame SCENE FRAME WIDTH:HEIGHT:LEFT:TOP SIZE FILE [OPTION...]: writes that part of a frame of
# 1920 x 1080 pixels over one backdrop, reduced in linear light, so that small lights stay as bright
# as they are seen in the frame. The options are for `brisel render`; the frame may be a smaller one.
drawFrame() {
  local frame
  frame=$(mktemp "$scratch/XXXXXX.png")
  build/release/bin/brisel render "$1" --frames "$2-$2" -o "$frame" --overwrite \
    --allow examples/media "${@:6}" \
    >"$frame.log" 2>&1 || { cat "$frame.log" >&2; return 1; }
  local linear="'maxval*pow(val/maxval,2.2)'" gamma="'maxval*pow(val/maxval,1/2.2)'"
  ffmpeg -nostdin -v error -y -f lavfi -i "color=0x080a14:s=1920x1080,format=gbrp" -i "$frame" \
    -filter_complex "
      [1]scale=1920:1080[stars];[0][stars]overlay=format=gbrp,crop=$3,format=gbrp16,
      lutrgb=r=$linear:g=$linear:b=$linear,scale=$4:flags=lanczos+accurate_rnd,format=gbrp16,
      lutrgb=r=$gamma:g=$gamma:b=$gamma" \
    -frames:v 1 -update 1 -pix_fmt bgr24 "$5"
  rm "$frame" "$frame.log"
}
export -f drawFrame
