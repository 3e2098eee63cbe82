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
  return view.width > 0 && view.height > 0 && view.format != PixelFormat::Mask8;
}

bool holdsRows(const ImageView& view) {
  const std::ptrdiff_t rowBytes = view.pixelBytes() * view.width;
  return view.bytes != nullptr && (view.rowBytes >= rowBytes || view.rowBytes <= -rowBytes);
}

/// Whether the input can be read as pixels like the output's; one without any pixels can.
bool isInputFor(const ImageView& output, const ImageView& input) {
  if (input.width <= 0 || input.height <= 0 || input.bytes == nullptr) return true;
  return input.format == output.format && holdsRows(input);
}

/// The views, whose input is wholly empty unless it has pixels.
FrameViews normalized(FrameViews views) {
  const ImageView& input = views.input;
  if (input.width <= 0 || input.height <= 0 || input.bytes == nullptr) views.input = {};
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
  if (!isFrame(views.output) || !holdsRows(views.output) ||
      !isInputFor(views.output, views.input)) {
    return false;
  }
  const FloatingPointGuard floatingPoint;
  const FrameState state = state_->view();
  if (time < 1) resetState(state);
  renderFrame(values, normalized(views), mask, &state);
  return true;
}

bool Instance::step(const Values& values, std::int32_t time, const FrameViews& views,
                    const MaskOutline* mask) {
  if (!isFrame(views.output) || !isInputFor(views.output, views.input)) return false;
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
  const State& s = *state_;
  return toBytes({s.stepCounter, s.emissionAccumulator, s.random.state(), s.sprites,
                  std::vector<Particle>(s.stars, s.stars + s.starCount)});
}

RestoreResult Instance::restore(std::span<const std::uint8_t> bytes) try {
  SavedState saved;
  const RestoreResult result = fromBytes(bytes, saved);
  if (result != RestoreResult::Restored) return result;
  auto state = std::make_unique<State>();
  if (!state->takeStars(saved.stars.data(), static_cast<std::int32_t>(saved.stars.size()))) {
    return RestoreResult::OutOfMemory;
  }
  state->stepCounter = saved.stepCounter;
  state->emissionAccumulator = saved.emissionAccumulator;
  state->random.seedRandom(saved.randomState);
  state->sprites = saved.sprites;
  state_ = std::move(state);
  return result;
} catch (const std::bad_alloc&) {
  return RestoreResult::OutOfMemory;
}

}  // namespace brisel
