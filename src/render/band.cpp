#include "render/band.h"

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstring>

namespace brisel {
namespace {

std::size_t pixelRowBytes(const MutableImageView& image) {
  return static_cast<std::size_t>(image.pixelBytes() * image.width);
}

void clear(const MutableImageView& image, IndexRange rows) {
  const std::size_t rowBytes = pixelRowBytes(image);
  if (image.rowBytes == static_cast<std::ptrdiff_t>(rowBytes) && !rows.empty()) {
    std::memset(image.at(0, rows.begin), 0,
                rowBytes * static_cast<std::size_t>(rows.end - rows.begin));
    return;
  }
  for (std::int32_t y = rows.begin; y < rows.end; ++y) {
    std::memset(image.at(0, y), 0, rowBytes);
  }
}

/// What the mix makes of rows without sprites: the input, transparent black where it does not reach
/// or is left out.
void fill(const PaintTarget& target, IndexRange rows) {
  const auto& [output, input, mix, keepsOutput, whenDone] = target;
  if (mix != MixMode::Normal && mix != MixMode::Add) return clear(output, rows);
  for (std::int32_t y = rows.begin; y < rows.end; ++y) {
    std::size_t covered = 0;
    if (y < input.height && input.width > 0) {
      covered = static_cast<std::size_t>(output.pixelBytes() * std::min(input.width, output.width));
      std::memcpy(output.at(0, y), input.at(0, y), covered);
    }
    std::memset(output.at(0, y) + covered, 0, pixelRowBytes(output) - covered);
  }
}

/// Paints a sprite as far as it lies in some rows of an image.
struct SpritePainter {
  const MutableImageView& image;
  const Kernels& kernels;
  const SpriteList& sprites;
  IndexRange rows;
  const PixelBox& box;
  PixelGrid& grid;

  void operator()(const DotSpec& dot) const {
    const float values[kMostLanes] = {image.fullScale()};
    kernels.run(image, {BlendRule::Over, {255, 255, 255}, dot.x, dot.y, 1, values});
  }
  void operator()(const GlowSpec& glow) const { paintOnGrid(kernels.glow, glow); }
  void operator()(const BlicsSpec& blics) const { paintOnGrid(kernels.blics, blics); }
  void operator()(const CrossSpec& cross) const { paintOnGrid(kernels.cross, cross); }
  void operator()(const ListedRays& rays) const {
    kernels.rays(image, rows, rays.spec, sprites.shapesOf(rays));
  }

  template <class Spec>
  void paintOnGrid(void (*kernel)(const MutableImageView&, const PixelGrid&, const Spec&),
                   const Spec& spec) const {
    if (!box.empty()) {
      grid.place(box, rows);
    } else {
      grid.place(image, rows, spec.steps(), spec.rowMap(), spec.columnMap());
    }
    if (!grid.empty()) kernel(image, grid, spec);
  }
};

}  // namespace

std::int32_t rowsPerBand(const MutableImageView& image, int threads) {
  constexpr std::ptrdiff_t kBandBytes = 2 << 20;
  constexpr std::int32_t kLeastRows = 8;
  constexpr std::int32_t kBandsPerThread = 12;
  const std::ptrdiff_t rowBytes = std::max<std::ptrdiff_t>(image.pixelBytes() * image.width, 1);
  auto rows = static_cast<std::int32_t>(std::min<std::ptrdiff_t>(kBandBytes / rowBytes, 1024));
  if (threads > 1) rows = std::min(rows, image.height / (kBandsPerThread * threads));
  return static_cast<std::int32_t>(
      std::bit_floor(static_cast<std::uint32_t>(std::max(rows, kLeastRows))));
}

void paintBand(const PaintTarget& target, Portion portion, const SpriteList& sprites,
               std::int32_t band, const Kernels& kernels, PixelGrid& grid) {
  const MutableImageView& output = target.output;
  const IndexRange rows = sprites.rowsOf(band);
  const bool clears = portion.isFirst && !target.keepsOutput;
  const bool isWholeFrame = clears && portion.isLast;
  const IndexRange painted = isWholeFrame ? sprites.touchedRowsOf(band) : rows;
  if (clears) clear(output, painted);
  sprites.forEachIn(band, [&](const ListedSprite& sprite) {
    std::visit(SpritePainter{output, kernels, sprites, rows, sprite.box, grid}, sprite.spec);
  });
  if (portion.isLast) kernels.mixWithInput(output, painted, target.input, target.mix);
  if (isWholeFrame) {
    fill(target, {rows.begin, painted.begin});
    fill(target, {painted.end, rows.end});
  }
  const auto* whenDone = target.whenRowsAreDone;
  if (portion.isLast && whenDone != nullptr) (*whenDone)(rows.begin, rows.end);
}

}  // namespace brisel
