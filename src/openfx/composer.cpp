#include "openfx/composer.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "render/kernels.h"
#include "scene/add_light.h"

namespace brisel::openfx {
namespace {

constexpr std::ptrdiff_t kFloatPixel = 4 * sizeof(float);

PixelFormat formatOf(Depth depth) {
  return depth == Depth::Byte ? PixelFormat::Argb8 : PixelFormat::Argb16;
}

MixMode modeOf(FloatMix mix) {
  if (mix == FloatMix::Normal) return MixMode::Normal;
  return mix == FloatMix::Add ? MixMode::Add : MixMode::Replace;
}

/// How many pixels follow that are transparent; most of a frame is, so many at a time.
template <class Channel>
int transparentPixels(const Channel* pixel, int count) {
  constexpr int kMany = 16;
  int found = 0;
  for (; found + kMany <= count; found += kMany) {
    Channel any = 0;
    for (int i = 0; i < 4 * kMany; ++i) any |= pixel[4 * found + i];
    if (any != 0) break;
  }
  while (found < count && pixel[4 * found] == 0) ++found;
  return found;
}

template <class Channel>
int visiblePixels(const Channel* pixel, int count) {
  int found = 0;
  while (found < count && pixel[4 * found] != 0) ++found;
  return found;
}

}  // namespace

Composer::Composer(const FrameTask& task, FrameBuffers& buffers)
    : task_(task),
      buffers_(buffers),
      size_{task.frame.x2 - task.frame.x1, task.frame.y2 - task.frame.y1} {
  const MutableImageView view = viewOf(buffers.stars);
  const auto bytes = static_cast<std::size_t>(view.rowBytes * view.height);
  buffers.stars.resize(bytes);
  buffers.input.resize(bytes);
  const OfxRectI& bounds = task.output.bounds;
  const int widest = std::max(size_.width, bounds.x2 - bounds.x1);
  buffers.run.resize(static_cast<std::size_t>(kFloatPixel * widest));
}

MutableImageView Composer::viewOf(std::vector<std::uint8_t>& buffer) const {
  MutableImageView view{buffer.data(), size_.width, size_.height, 0,
                        formatOf(task_.output.layout.depth)};
  view.rowBytes = view.pixelBytes() * view.width;
  return view;
}

float* Composer::floatsBelow(std::int32_t row) const {
  return reinterpret_cast<float*>(buffers_.below.data() + kFloatPixel * size_.width * row);
}

/// Calls `function` with stretches of a row of the frame, y1 of `row`, and the source's pixels
/// there, or null where it has none.
template <class Function>
void Composer::splitBySource(const OfxRectI& row, const Function& function) const {
  const OfxRectI& bounds = task_.source.bounds;
  const bool hasRow = task_.source.data != nullptr && row.y1 >= bounds.y1 && row.y1 < bounds.y2;
  const int x1 = hasRow ? std::clamp(bounds.x1, row.x1, row.x2) : row.x2;
  const int x2 = hasRow ? std::clamp(bounds.x2, x1, row.x2) : row.x2;
  if (row.x1 < x1) function(row.x1, x1, nullptr);
  if (x1 < x2) function(x1, x2, task_.source.at(x1, row.y1));
  if (x2 < row.x2) function(x2, row.x2, nullptr);
}

/// Calls `writeRow` with each row to write, as far as it lies in the frame, and clears the rest.
template <class Function>
void Composer::eachRow(const Function& writeRow) const {
  const OfxRectI& window = task_.window;
  const std::ptrdiff_t pixelBytes = task_.output.layout.bytes();
  const auto clear = [&](int y, int x1, int x2) {
    if (x1 >= x2) return;
    std::memset(task_.output.at(x1, y), 0, static_cast<std::size_t>((x2 - x1) * pixelBytes));
  };
  for (int y = window.y1; y < window.y2; ++y) {
    if (task_.rowStep > 1 && (y & 1) != task_.firstRow) continue;
    const OfxRectI row = overlap(task_.frame, {window.x1, y, window.x2, y + 1});
    if (isEmpty(row)) {
      clear(y, window.x1, window.x2);
      continue;
    }
    clear(y, window.x1, row.x1);
    writeRow(row);
    clear(y, row.x2, window.x2);
  }
}

void Composer::fillInput() {
  if (std::exchange(isInputFilled_, true)) return;
  const MutableImageView view = viewOf(buffers_.input);
  for (std::int32_t r = 0; r < view.height; ++r) {
    const int y = task_.frame.y2 - 1 - r;
    splitBySource({task_.frame.x1, y, task_.frame.x2, y + 1},
                  [&](int x1, int x2, const std::uint8_t* source) {
                    std::uint8_t* to = view.at(x1 - task_.frame.x1, r);
                    if (source != nullptr) {
                      readPixels(source, task_.source.layout, x2 - x1, to);
                    } else {
                      std::memset(to, 0, static_cast<std::size_t>((x2 - x1) * view.pixelBytes()));
                    }
                  });
  }
}

void Composer::copyUnder(const std::uint8_t* source, int count, std::uint8_t* output) const {
  const PixelLayout& layout = task_.output.layout;
  if (source == nullptr) {
    std::memset(output, 0, static_cast<std::size_t>(layout.bytes() * count));
  } else {
    copyPixels(source, task_.source.layout, count, layout, output, buffers_.run.data());
  }
}

void Composer::pass() const {
  eachRow([this](const OfxRectI& row) {
    splitBySource(row, [&](int x1, int x2, const std::uint8_t* source) {
      copyUnder(source, x2 - x1, task_.output.at(x1, row.y1));
    });
  });
}

void Composer::mixOver(std::uint8_t* stars, const std::uint8_t* source, int count, FloatMix mix,
                       std::uint8_t* output) const {
  const PixelLayout& layout = task_.output.layout;
  std::uint8_t* run = buffers_.run.data();
  if (isFloat()) {
    auto* floats = reinterpret_cast<float*>(run);
    if (source != nullptr) {
      readFloats(source, task_.source.layout, count, floats);
    } else {
      std::fill_n(floats, 4 * count, 0.0f);
    }
    mixFloats(stars, count, mix, floats);
    writeFloats(floats, count, layout, output);
    return;
  }
  MutableImageView over = this->stars();
  over.bytes = stars;
  over.width = count;
  over.height = 1;
  ImageView under = over;
  under.bytes = run;
  if (source != nullptr && mix != FloatMix::Replace) {
    readPixels(source, task_.source.layout, count, run);
  } else {
    under.width = 0;
  }
  kernelsNamed(nullptr).mixWithInput(over, {0, 1}, under, modeOf(mix));
  writePixels(stars, count, layout, output);
}

template <class Channel>
void Composer::putRun(const std::uint8_t* source, std::uint8_t* stars, int count, FloatMix mix,
                      std::uint8_t* output) const {
  if (mix == FloatMix::Replace) return mixOver(stars, source, count, mix, output);
  const std::ptrdiff_t sourceBytes = source != nullptr ? task_.source.layout.bytes() : 0;
  const auto advance = [&](int pixels) {
    stars += std::ptrdiff_t{4} * pixels * static_cast<std::ptrdiff_t>(sizeof(Channel));
    if (source != nullptr) source += sourceBytes * pixels;
    output += task_.output.layout.bytes() * pixels;
    count -= pixels;
  };
  while (count > 0) {
    const int without = transparentPixels(reinterpret_cast<const Channel*>(stars), count);
    if (without > 0) copyUnder(source, without, output);
    advance(without);
    const int with = visiblePixels(reinterpret_cast<const Channel*>(stars), count);
    if (with > 0) mixOver(stars, source, with, mix, output);
    advance(with);
  }
}

void Composer::put(FloatMix mix) const {
  const MutableImageView view = stars();
  eachRow([&](const OfxRectI& row) {
    splitBySource(row, [&](int x1, int x2, const std::uint8_t* source) {
      std::uint8_t* over = view.at(x1 - task_.frame.x1, task_.frame.y2 - 1 - row.y1);
      std::uint8_t* to = task_.output.at(x1, row.y1);
      if (view.isDeep()) {
        putRun<std::uint16_t>(source, over, x2 - x1, mix, to);
      } else {
        putRun<std::uint8_t>(source, over, x2 - x1, mix, to);
      }
    });
  });
}

void Composer::begin() const {
  const MutableImageView view = stars();
  const std::ptrdiff_t pixelBytes = isFloat() ? kFloatPixel : view.pixelBytes();
  buffers_.below.assign(static_cast<std::size_t>(pixelBytes * view.width * view.height), 0);
  for (std::int32_t r = 0; r < view.height; ++r) {
    const int y = task_.frame.y2 - 1 - r;
    splitBySource({task_.frame.x1, y, task_.frame.x2, y + 1}, [&](int x1, int x2,
                                                                  const std::uint8_t* source) {
      if (source == nullptr) return;
      const int column = x1 - task_.frame.x1;
      const PixelLayout& layout = task_.source.layout;
      if (isFloat()) {
        readFloats(source, layout, x2 - x1, floatsBelow(r) + std::ptrdiff_t{4} * column);
      } else {
        readPixels(source, layout, x2 - x1, viewOf(buffers_.below).at(column, r));
      }
    });
  }
}

void Composer::add(FloatMix mix) const {
  const MutableImageView over = stars();
  if (isFloat()) {
    for (std::int32_t r = 0; r < over.height; ++r) {
      mixFloats(over.at(0, r), over.width, mix, floatsBelow(r));
    }
    return;
  }
  const MutableImageView below = viewOf(buffers_.below);
  if (mix == FloatMix::Light) {
    scene::addLight(over, below);
  } else {
    kernelsNamed(nullptr).mixWithInput(over, {0, over.height}, below, modeOf(mix));
  }
  buffers_.stars.swap(buffers_.below);
}

void Composer::end() const {
  eachRow([this](const OfxRectI& row) {
    const int r = task_.frame.y2 - 1 - row.y1;
    const int column = row.x1 - task_.frame.x1;
    const PixelLayout& layout = task_.output.layout;
    std::uint8_t* to = task_.output.at(row.x1, row.y1);
    if (isFloat()) {
      writeFloats(floatsBelow(r) + std::ptrdiff_t{4} * column, row.x2 - row.x1, layout, to);
    } else {
      writePixels(viewOf(buffers_.below).at(column, r), row.x2 - row.x1, layout, to);
    }
  });
}

}  // namespace brisel::openfx
