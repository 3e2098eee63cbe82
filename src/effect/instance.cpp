#include "effect/instance.h"

#include <cstdlib>
#include <cstring>
#include <new>
#include <utility>

#include "effect/floating_point_guard.h"

namespace brisel {
namespace {

bool isFrame(const ImageView& view) {
  return view.width > 0 && view.height > 0 && view.format != PixelFormat::Mask8;
}

bool holdsRows(const ImageView& view) {
  return view.bytes != nullptr && std::abs(view.rowBytes) >= view.pixelBytes() * view.width;
}

/// Whether the input can be read as pixels like the output's; one without any pixels can.
bool isInputFor(const ImageView& output, const ImageView& input) {
  if (input.width <= 0 || input.height <= 0 || input.bytes == nullptr) return true;
  return input.format == output.format && holdsRows(input);
}

/// With an input that is empty in all respects or in none.
FrameViews normalized(FrameViews views) {
  const ImageView& input = views.input;
  if (input.width <= 0 || input.height <= 0 || input.bytes == nullptr) views.input = {};
  return views;
}

void clear(const MutableImageView& view) {
  const auto rowBytes = static_cast<std::size_t>(view.pixelBytes() * view.width);
  for (std::int32_t y = 0; y < view.height; ++y) std::memset(view.at(0, y), 0, rowBytes);
}

}  // namespace

Instance::Instance(const Instance& other)
    : stepCounter_(other.stepCounter_),
      emissionAccumulator_(other.emissionAccumulator_),
      random_(other.random_),
      sprites_(other.sprites_) {
  if (other.capacity_ == 0) return;
  if (!resizeStars(state(), other.capacity_)) throw std::bad_alloc();
  starCount_ = other.starCount_;
  if (starCount_ > 0) {
    std::memcpy(stars_, other.stars_, static_cast<std::size_t>(starCount_) * sizeof(Particle));
  }
}

Instance::Instance(Instance&& other) noexcept
    : stars_(std::exchange(other.stars_, nullptr)),
      capacity_(std::exchange(other.capacity_, 0)),
      starCount_(std::exchange(other.starCount_, 0)),
      stepCounter_(other.stepCounter_),
      emissionAccumulator_(other.emissionAccumulator_),
      random_(other.random_),
      sprites_(other.sprites_) {}

Instance& Instance::operator=(Instance other) noexcept {
  std::swap(stars_, other.stars_);
  std::swap(capacity_, other.capacity_);
  starCount_ = other.starCount_;
  stepCounter_ = other.stepCounter_;
  emissionAccumulator_ = other.emissionAccumulator_;
  random_ = other.random_;
  sprites_ = other.sprites_;
  return *this;
}

Instance::~Instance() {
  releaseStars(stars_, capacity_);
}

FrameState Instance::state() {
  return {stars_, capacity_, starCount_, stepCounter_, emissionAccumulator_, random_, sprites_};
}

bool Instance::render(const Values& values, std::int32_t time, const FrameViews& views,
                      const MaskOutline* mask) {
  if (!isFrame(views.output) || !holdsRows(views.output) ||
      !isInputFor(views.output, views.input)) {
    return false;
  }
  const FloatingPointGuard floatingPoint;
  clear(views.output);
  const FrameState state = this->state();
  if (time < 1) resetState(state);
  renderFrame(values, normalized(views), mask, &state);
  return true;
}

bool Instance::step(const Values& values, std::int32_t time, const FrameViews& views,
                    const MaskOutline* mask) {
  if (!isFrame(views.output) || !isInputFor(views.output, views.input)) return false;
  const FloatingPointGuard floatingPoint;
  const FrameState state = this->state();
  if (time < 1) resetState(state);
  stepFrame(values, normalized(views), mask, state);
  return true;
}

std::vector<std::uint8_t> Instance::save() const {
  SavedState saved{stepCounter_, emissionAccumulator_, random_.state(), sprites_, {}};
  saved.stars.assign(stars_, stars_ + starCount_);
  return toBytes(saved);
}

RestoreResult Instance::restore(std::span<const std::uint8_t> bytes) try {
  SavedState saved;
  const RestoreResult result = fromBytes(bytes, saved);
  if (result != RestoreResult::Restored) return result;

  Instance restored;
  const auto count = static_cast<std::int32_t>(saved.stars.size());
  if (count > 0) {
    if (!resizeStars(restored.state(), count)) return RestoreResult::OutOfMemory;
    std::memcpy(restored.stars_, saved.stars.data(), saved.stars.size() * sizeof(Particle));
  }
  restored.starCount_ = count;
  restored.stepCounter_ = saved.stepCounter;
  restored.emissionAccumulator_ = saved.emissionAccumulator;
  restored.random_.seedRandom(saved.randomState);
  restored.sprites_ = saved.sprites;
  *this = std::move(restored);
  return result;
} catch (const std::bad_alloc&) {
  return RestoreResult::OutOfMemory;
}

}  // namespace brisel
