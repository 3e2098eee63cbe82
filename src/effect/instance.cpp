#include "effect/instance.h"

#include <cstring>
#include <new>
#include <utility>

#include "core/floating_point_guard.h"
#include "core/random.h"
#include "effect/frame.h"
#include "effect/saved_state.h"
#include "engine/particle.h"
#include "render/stars/compose.h"

namespace brisel {
namespace {

bool isFrame(const ImageView& view) {
  return view.width > 0 && view.height > 0 &&
         (view.format == PixelFormat::Argb8 || view.format == PixelFormat::Argb16);
}

bool holdsRows(const ImageView& view) {
  const std::ptrdiff_t rowBytes = view.pixelBytes() * view.width;
  return view.bytes != nullptr && (view.rowBytes >= rowBytes || view.rowBytes <= -rowBytes);
}

bool isEmpty(const ImageView& image) {
  return image.width <= 0 || image.height <= 0 || image.bytes == nullptr;
}

/// Whether the output is a frame, and input and backdrop can be read as pixels like its own.
bool areOfOneFrame(const FrameViews& views) {
  const auto canBeRead = [&](const ImageView& image) {
    return isEmpty(image) || (image.format == views.output.format && holdsRows(image));
  };
  return isFrame(views.output) && canBeRead(views.input) && canBeRead(views.backdrop);
}

/// The views, whose images without pixels are wholly empty.
FrameViews normalized(FrameViews views) {
  if (isEmpty(views.input)) views.input = {};
  if (isEmpty(views.backdrop)) views.backdrop = {};
  return views;
}

}  // namespace

std::string_view describe(RestoreResult result) {
  switch (result) {
    case RestoreResult::Restored:
      return "is restored";
    case RestoreResult::NoSavedInstance:
      return "is no saved instance";
    case RestoreResult::OtherByteOrder:
      return "was saved on a machine of another byte order";
    case RestoreResult::OtherVersion:
      return "was saved by another version of the effect";
    case RestoreResult::EndsEarly:
      return "ends early";
    case RestoreResult::Damaged:
      return "is damaged";
    case RestoreResult::OutOfMemory:
      break;
  }
  return "holds more stars than there is memory for";
}

struct Instance::State {
  State() = default;
  State(const State& other);
  State& operator=(const State&) = delete;
  ~State() { releaseStars(stars, capacity); }

  FrameState view() {
    return {stars, capacity, starCount, stepCounter, emissionAccumulator, random, sprites};
  }
  /// Copies stars into a state that has none. Returns false, and changes nothing, without memory.
  bool takeStars(const Particle* copied, std::int32_t count);

  Particle* stars = nullptr;  // owned
  std::int32_t capacity = 0;
  std::int32_t starCount = 0;
  std::int32_t stepCounter = 0;
  float emissionAccumulator = 0.0f;
  RandomGenerator random;
  SpriteState sprites;
};

Instance::State::State(const State& other)
    : stepCounter(other.stepCounter),
      emissionAccumulator(other.emissionAccumulator),
      random(other.random),
      sprites(other.sprites) {
  if (!takeStars(other.stars, other.starCount)) throw std::bad_alloc();
}

bool Instance::State::takeStars(const Particle* copied, std::int32_t count) {
  if (count == 0) return true;
  if (!resizeStars(view(), count)) return false;
  std::memcpy(stars, copied, static_cast<std::size_t>(count) * sizeof(Particle));
  starCount = count;
  return true;
}

Instance::Instance() : state_(std::make_unique<State>()) {}
Instance::Instance(const Instance& other) : state_(std::make_unique<State>(*other.state_)) {}
Instance::Instance(Instance&& other) noexcept = default;
Instance::~Instance() = default;

Instance& Instance::operator=(Instance other) noexcept {
  state_ = std::move(other.state_);
  return *this;
}

bool Instance::render(const Values& values, std::int32_t time, const FrameViews& views,
                      const MaskOutline* mask) {
  if (!areOfOneFrame(views) || !holdsRows(views.output)) return false;
  const FloatingPointGuard floatingPoint;
  const FrameState state = state_->view();
  if (time < 1) resetState(state);
  renderFrame(values, normalized(views), mask, &state);
  return true;
}

bool Instance::step(const Values& values, std::int32_t time, const FrameViews& views,
                    const MaskOutline* mask) {
  if (!areOfOneFrame(views)) return false;
  const FloatingPointGuard floatingPoint;
  const FrameState state = state_->view();
  if (time < 1) resetState(state);
  stepFrame(values, normalized(views), mask, state);
  return true;
}

std::int32_t Instance::starCount() const {
  return state_->starCount;
}

std::vector<std::uint8_t> Instance::save() const {
  return saveState(state_->view());
}

RestoreResult Instance::restore(std::span<const std::uint8_t> bytes) {
  return restoreState(bytes, state_->view());
}

}  // namespace brisel
