#include "render/sprite_list.h"

#include <algorithm>
#include <cmath>
#include <exception>
#include <functional>
#include <numeric>
#include <utility>

#include "core/numbers.h"

namespace brisel {

void SpriteList::begin(FrameSize frame, std::int32_t rowsPerBand, std::function<void()> whenFull) {
  frame_ = frame;
  rowShift_ = std::countr_zero(static_cast<std::uint32_t>(rowsPerBand));
  whenFull_ = std::move(whenFull);
  failure_ = nullptr;
  sprites_.clear();
  shapeCount_ = 0;
  attempt([&] {
    sprites_.reserve(kMostSprites);
    const std::int32_t lastBand = (frame.height - 1) >> rowShift_;
    bands_.resize(static_cast<std::size_t>(lastBand) + 1);
    resetBands();
  });
}

template <class Action>
void SpriteList::attempt(Action action) {
  try {
    action();
  } catch (...) {
    failure_ = std::current_exception();
  }
}

void SpriteList::throwFailure() {
  if (failure_ != nullptr) std::rethrow_exception(std::exchange(failure_, nullptr));
}

void SpriteList::resetBands() {
  for (std::int32_t band = 0; band < bandCount(); ++band) {
    Band& marks = bands_[static_cast<std::size_t>(band)];
    const std::int32_t first = band << rowShift_;
    marks.touched = {first, first};
    marks.work = 0;
    marks.sprites.fill(0);
  }
}

IndexRange SpriteList::rowsOf(std::int32_t band) const {
  const std::int32_t first = band << rowShift_;
  return {first, first + std::min(std::int32_t{1} << rowShift_, frame_.height - first)};
}

IndexRange SpriteList::touchedRowsOf(std::int32_t band) const {
  return bands_[static_cast<std::size_t>(band)].touched;
}

std::vector<std::int32_t> SpriteList::bandsDearestFirst() const {
  std::vector<std::int32_t> order(bands_.size());
  std::iota(order.begin(), order.end(), 0);
  std::ranges::sort(order, std::greater{}, [this](std::int32_t band) {
    return bands_[static_cast<std::size_t>(band)].work;
  });
  return order;
}

void SpriteList::add(const DotSpec& dot) {
  const bool isInside = dot.x >= 0 && dot.x < frame_.width && dot.y >= 0 && dot.y < frame_.height;
  if (isInside) keep(dot, {dot.y, dot.y + 1});
}

void SpriteList::add(const GlowSpec& glow) {
  keepOnGrid(glow);
}

void SpriteList::add(const BlicsSpec& blics) {
  keepOnGrid(blics);
}

void SpriteList::add(const CrossSpec& cross) {
  keepOnGrid(cross);
}

void SpriteList::add(const RaySpec& rays) {
  // No corner of a ray lies farther from the center. Bands beside a ray reach farther, but only in
  // the rows between its corners; and a ray that ends less than a pixel above the frame shows in
  // row 0, there with its edges prolonged far beyond its corners.
  const auto [x, y] = rays.center;
  const float reach = 1.01f * (rays.length + 1.5f * std::fabs(rays.width)) + 2.0f +
                      (std::fabs(x) + std::fabs(y)) * 0x1p-20f;
  const float width = static_cast<float>(frame_.width);
  constexpr float kFarthestBand = 14.0f;
  const float across = reach + kFarthestBand;
  if (y > 1.0f && (x + across < 0.0f || x - across > width)) return;
  // Corners that are no numbers are found out later.
  const float first = y - reach;
  const float last = y + reach;
  const IndexRange rows{
      first > 0.0f ? truncToInt(first) : 0,
      last < static_cast<float>(frame_.height) ? truncToInt(last) + 1 : frame_.height};
  if (rows.empty() || failure_ != nullptr) return;
  const bool liesInOneBand = rows.begin >> rowShift_ == (rows.end - 1) >> rowShift_;
  if (liesInOneBand || rays.count > static_cast<float>(kMostRays))
    return keep(ListedRays{rays}, rows);
  const auto count = static_cast<std::uint32_t>(std::ceil(rays.count));
  if (shapeCount_ + count > kMostRays) paintNow();
  const std::uint32_t begin = shapeCount_;
  shapeCount_ += count;
  if (shapes_.size() < shapeCount_) {
    attempt([&] {
      shapes_.reserve(kMostRays);
      shapes_.resize(shapeCount_);
    });
  }
  keep(ListedRays{rays, begin, count}, rows);
}

template <class Spec>
void SpriteList::keepOnGrid(const Spec& spec) {
  const IndexRange steps = spec.steps();
  const PixelBox box = pixelBoxOf(frame_, steps, spec.rowMap(), spec.columnMap());
  if (!box.empty()) return keep(spec, box.rows.pixels(), box);
  if (pixelsOf(steps, frame_.width, spec.columnMap()).empty()) return;
  keep(spec, pixelsOf(steps, frame_.height, spec.rowMap()));
}

/// `rows` lie in the frame, or are none.
template <class Spec>
void SpriteList::keep(const Spec& spec, IndexRange rows, const PixelBox& box) {
  if (rows.empty() || failure_ != nullptr) return;
  const std::size_t index = sprites_.size();
  sprites_.push_back({spec, box});
  const auto mark = std::uint64_t{1} << index % 64;
  for (std::int32_t band = rows.begin >> rowShift_; band <= (rows.end - 1) >> rowShift_; ++band) {
    Band& marks = bands_[static_cast<std::size_t>(band)];
    marks.sprites[index / 64] |= mark;
    const IndexRange here = overlap(rows, rowsOf(band));
    marks.work += std::int64_t{here.end - here.begin} * (rows.end - rows.begin);
    marks.touched = marks.touched.empty() ? here
                                          : IndexRange{std::min(marks.touched.begin, here.begin),
                                                       std::max(marks.touched.end, here.end)};
  }
  if (sprites_.size() == kMostSprites) paintNow();
}

void SpriteList::paintNow() {
  attempt(whenFull_);
  sprites_.clear();
  shapeCount_ = 0;
  resetBands();
}

std::int32_t SpriteList::partCount() const {
  return shapeCount_ == 0 ? 0 : static_cast<std::int32_t>((sprites_.size() + kPart - 1) / kPart);
}

void SpriteList::buildRaysIn(std::int32_t part) {
  const std::size_t first = static_cast<std::size_t>(part) * kPart;
  const std::size_t end = std::min(first + kPart, sprites_.size());
  for (std::size_t i = first; i < end; ++i) {
    const auto* fan = std::get_if<ListedRays>(&sprites_[i].spec);
    if (fan == nullptr || fan->count == 0) continue;
    for (RayAngles angles(fan->spec); !angles.atEnd(); angles.next()) {
      const auto index = static_cast<std::size_t>(angles.index());
      buildRay(shapes_[fan->first + index], fan->spec, angles.degrees());
    }
  }
}

std::size_t SpriteList::memoryBytes() const {
  return sprites_.capacity() * sizeof(ListedSprite) + shapes_.capacity() * sizeof(RayShape) +
         bands_.capacity() * sizeof(Band);
}

}  // namespace brisel
