// Draws one frame of the effect to a PNG file, with the effect library and libpng alone.
//
//   draw_one_frame PRESET.txt PICTURE.png
#include <png.h>

#include <cstdio>
#include <vector>

#include "effect/instance.h"
#include "effect/presets.h"

int main(int argc, char** argv) {
  if (argc != 3) {
    std::fprintf(stderr, "usage: draw_one_frame PRESET.txt PICTURE.png\n");
    return 2;
  }
  constexpr brisel::FrameSize kSize{640, 360};
  constexpr int kFrame = 50;

  brisel::Values values(kSize);
  if (brisel::applyParameterFile(argv[1], kSize, values) != brisel::ParameterFile::State::Read) {
    std::fprintf(stderr, "%s cannot be read or is no parameter file\n", argv[1]);
    return 1;
  }
  values.setColor(brisel::kColorOfParticles, {.red = 255, .green = 204, .blue = 102});

  std::vector<std::uint8_t> pixels(kSize.width * kSize.height * 4);
  const brisel::FrameViews views{
      .output = {pixels.data(), kSize.width, kSize.height, kSize.width * 4}};
  brisel::Instance instance;
  for (int frame = 0; frame < kFrame; ++frame) instance.step(values, frame, views);
  instance.render(values, kFrame, views);

  png_image image{};
  image.version = PNG_IMAGE_VERSION;
  image.width = kSize.width;
  image.height = kSize.height;
  image.format = PNG_FORMAT_ARGB;
  if (png_image_write_to_file(&image, argv[2], 0, pixels.data(), 0, nullptr) == 0) {
    std::fprintf(stderr, "%s: %s\n", argv[2], image.message);
    return 1;
  }
}
