#include "openfx/composer.h"

#include <algorithm>
#include <cstring>

#include "render/kernels.h"
#include "scene/add_light.h"

namespace brisel::openfx {
namespace {

constexpr PixelLayout kPlainFloats{.depth = Depth::Float};

PixelFormat formatOf(Depth depth) {
  return depth == Depth::Byte ? PixelFormat::Argb8 : PixelFormat::Argb16;
}

MixMode modeOf(FloatMix mix) {
  if (mix == FloatMix::Normal) return MixMode::Normal;
  return mix == FloatMix::Add ? MixMode::Add : MixMode::Replace;
}

}  // namespace

Composer::Composer(const FrameTask& task, FrameBuffers& buffers)
    : task_(task),
      buffers_(buffers),
      size_{task.frame.x2 - task.frame.x1, task.frame.y2 - task.frame.y1},
      rows_(pixelRows(kernelsNamed(nullptr).name, task.output.layout.depth)),
      starBytes_(task.output.layout.depth == Depth::Byte ? 4 : 8) {}

/// A frame in the effect's pixels.
MutableImageView Composer::viewIn(std::vector<std::uint8_t>& buffer) const {
  const std::ptrdiff_t rowBytes = starBytes_ * size_.width;
  buffer.resize(static_cast<std::size_t>(rowBytes * size_.height));
  return {buffer.data(), size_.width, size_.height, rowBytes, formatOf(task_.output.layout.depth)};
}

/// Whether the output has a place for each pixel of the frame, as large a one as the effect's, that
/// is not the source's, too.
bool Composer::canDrawInOutput() const {
  const HostPixels& output = task_.output;
  const OfxRectI& frame = task_.frame;
  const auto address = reinterpret_cast<std::uintptr_t>(output.data);
  return output.layout.bytes() == starBytes_ && task_.rowStep == 1 &&
         output.data != task_.source.data && contains(task_.window, frame) &&
         address % static_cast<std::size_t>(starBytes_) == 0 && output.rowBytes % starBytes_ == 0;
}

std::uint8_t* Composer::below(std::int32_t column, std::int32_t row) const {
  const std::ptrdiff_t bytes = isFloat() ? kPlainFloats.bytes() : starBytes_;
  return buffers_.below.data() + bytes * (std::ptrdiff_t{size_.width} * row + column);
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

/// Calls `function` with what the source has of each row of the frame: its column and row from the
/// top, its length and its pixels.
template <class Function>
void Composer::eachSourceRow(const Function& function) const {
  const OfxRectI& frame = task_.frame;
  for (std::int32_t r = 0; r < size_.height; ++r) {
    const int y = frame.y2 - 1 - r;
    splitBySource({frame.x1, y, frame.x2, y + 1}, [&](int x1, int x2, const std::uint8_t* source) {
      if (source != nullptr) function(x1 - frame.x1, r, x2 - x1, source);
    });
  }
}

/// Calls `writeRow` with each row to write, as far as it lies in the frame, and clears the rest.
template <class Function>
void Composer::eachRow(const OfxRectI& window, const Function& writeRow) const {
  const std::ptrdiff_t pixelBytes = task_.output.layout.bytes();
  const auto clear = [&](int y, int x1, int x2) {
    if (x1 >= x2) return;
    std::memset(task_.output.at(x1, y), 0, static_cast<std::size_t>((x2 - x1) * pixelBytes));
  };
  for (int y = window.y1; y < window.y2; ++y) {
    // Rows belong to fields by their place on the host's grid: its even ones are the lower field's.
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
  if (input_.bytes != nullptr) return;
  buffers_.input.clear();
  const MutableImageView view = viewIn(buffers_.input);
  eachSourceRow([&](int column, int row, int count, const std::uint8_t* source) {
    rows_.read(source, task_.source.layout, count, view.at(column, row));
  });
  input_ = view;
}

void Composer::copyRun(const std::uint8_t* from, const PixelLayout& layout, int count,
                       const PixelLayout& toLayout, std::uint8_t* to) const {
  if (layout != toLayout) return rows_.convert(from, layout, count, toLayout, to);
  std::memcpy(to, from, static_cast<std::size_t>(layout.bytes() * count));
}

void Composer::pass() const {
  const PixelLayout& layout = task_.output.layout;
  eachRow(task_.window, [&](const OfxRectI& row) {
    splitBySource(row, [&](int x1, int x2, const std::uint8_t* source) {
      std::uint8_t* to = task_.output.at(x1, row.y1);
      if (source != nullptr) {
        copyRun(source, task_.source.layout, x2 - x1, layout, to);
      } else {
        std::memset(to, 0, static_cast<std::size_t>(layout.bytes() * (x2 - x1)));
      }
    });
  });
}

/// What is drawn where it is to be mixed stays in the processor's cache.
void Composer::beginAlone() {
  if (!canDrawInOutput()) {
    stars_ = viewIn(buffers_.stars);
    return;
  }
  const HostPixels& output = task_.output;
  stars_ = {output.at(task_.frame.x1, task_.frame.y2 - 1), size_.width, size_.height,
            -output.rowBytes, formatOf(output.layout.depth)};
}

void Composer::put(FloatMix mix, std::int32_t begin, std::int32_t end) const {
  OfxRectI window = task_.window;  // with what lies above the first row and below the last one
  if (begin > 0) window.y2 = std::min(window.y2, task_.frame.y2 - begin);
  if (end < size_.height) window.y1 = std::max(window.y1, task_.frame.y2 - end);
  const PixelLayout& layout = task_.output.layout;
  eachRow(window, [&](const OfxRectI& row) {
    splitBySource(row, [&](int x1, int x2, const std::uint8_t* source) {
      const std::uint8_t* over = stars_.at(x1 - task_.frame.x1, task_.frame.y2 - 1 - row.y1);
      std::uint8_t* to = task_.output.at(x1, row.y1);
      if (mix == FloatMix::Replace) {
        rows_.write(over, x2 - x1, layout, to);
      } else {
        rows_.mix(over, source, task_.source.layout, x2 - x1, mix, layout, to);
      }
    });
  });
}

void Composer::begin() {
  stars_ = viewIn(buffers_.stars);
  const std::ptrdiff_t bytes = isFloat() ? kPlainFloats.bytes() : starBytes_;
  buffers_.below.assign(static_cast<std::size_t>(bytes * size_.width * size_.height), 0);
  eachSourceRow([&](int column, int row, int count, const std::uint8_t* source) {
    if (isFloat()) {
      copyRun(source, task_.source.layout, count, kPlainFloats, below(column, row));
    } else {
      rows_.read(source, task_.source.layout, count, below(column, row));
    }
  });
}

void Composer::add(FloatMix mix) {
  if (isFloat()) {
    for (std::int32_t r = 0; r < size_.height; ++r) {
      if (mix == FloatMix::Replace) {
        rows_.write(stars_.at(0, r), size_.width, kPlainFloats, below(0, r));
      } else {
        rows_.mix(stars_.at(0, r), below(0, r), kPlainFloats, size_.width, mix, kPlainFloats,
                  below(0, r));
      }
    }
    return;
  }
  const MutableImageView under = viewIn(buffers_.below);
  if (mix == FloatMix::Light) {
    scene::addLight(stars_, under);
  } else {
    kernelsNamed(nullptr).mixWithInput(stars_, {0, size_.height}, under, modeOf(mix));
  }
  buffers_.stars.swap(buffers_.below);
  stars_ = viewIn(buffers_.stars);
}

void Composer::end() const {
  eachRow(task_.window, [this](const OfxRectI& row) {
    const int count = row.x2 - row.x1;
    const std::uint8_t* from = below(row.x1 - task_.frame.x1, task_.frame.y2 - 1 - row.y1);
    std::uint8_t* to = task_.output.at(row.x1, row.y1);
    if (isFloat()) {
      copyRun(from, kPlainFloats, count, task_.output.layout, to);
    } else {
      rows_.write(from, count, task_.output.layout, to);
    }
  });
}

}  // namespace brisel::openfx
