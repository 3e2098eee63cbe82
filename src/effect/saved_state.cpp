#include "effect/saved_state.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstring>
#include <new>
#include <type_traits>

#include "core/random.h"
#include "engine/particle.h"
#include "render/stars/compose.h"

namespace brisel {
namespace {

/// The state that frames leave to the next ones.
struct SavedState {
  std::int32_t stepCounter = 0;
  float emissionAccumulator = 0.0f;
  std::uint32_t randomState = 0;
  SpriteState sprites;
  std::vector<Particle> stars;
};

/// At the start of all saved bytes, in the machine's own byte order.
struct Header {
  std::array<char, 8> mark;
  std::uint32_t byteOrder;
  std::uint32_t version;
  std::uint64_t bytes;  // header and checksum included
};
static_assert(sizeof(Header) == 24);

constexpr std::array<char, 8> kMark{'B', 'R', 'I', 'S', 'E', 'L', 'S', 'T'};
constexpr std::uint32_t kByteOrder = 0x01020304;

/// To be raised whenever the fields below change, or what they mean.
constexpr std::uint32_t kVersion = 1;

/// Calls `each` with one field after the other, the same for writing and reading.
template <class State, class Each>
void forFields(State& state, Each& each) {
  each(state.stepCounter);
  each(state.emissionAccumulator);
  each(state.randomState);
  each(state.sprites.rainbowShift);
  each(state.sprites.rainbowOn);
  each(state.sprites.currentRandomFactor);
  each(state.sprites.glowScale);
  each(state.sprites.crossVariant);
  each(state.sprites.textureScale);
  each(state.sprites.textureMix);
}
static_assert(sizeof(SpriteState) == 28, "a field was added or left: save those that there are");

template <class Star, class Each>
void forStarFields(Star& star, Each& each) {
  each(star.randomFactor);
  each(star.size);
  each(star.rayWidth);
  each(star.angle);
  each(star.value);
  each(star.raysCount);
  each(star.colorR);
  each(star.colorG);
  each(star.colorB);
  each(star.terminateColorR);
  each(star.terminateColorG);
  each(star.terminateColorB);
  each(star.starType);
  each(star.terminateType);
  each(star.placementRetries);
  each(star.x);
  each(star.y);
  each(star.startX);
  each(star.startY);
  each(star.age);
  each(star.birthTime);
  each(star.lifeTime);
  each(star.velocityX);
  each(star.velocityY);
}
constexpr std::size_t kStarBytes = 87;
static_assert(sizeof(Particle) == kStarBytes + 1,
              "a field was added or left: save those there are");

class Writer {
 public:
  explicit Writer(std::vector<std::uint8_t>& bytes) : bytes_(bytes) {}

  template <class Field>
  void operator()(const Field& field) {
    const std::size_t end = bytes_.size();
    bytes_.resize(end + sizeof field);
    std::memcpy(bytes_.data() + end, &field, sizeof field);
  }

 private:
  std::vector<std::uint8_t>& bytes_;
};

/// Reads 0 beyond the end of the bytes.
class ByteReader {
 public:
  explicit ByteReader(std::span<const std::uint8_t> bytes) : rest_(bytes) {}

  template <class Field>
  void operator()(Field& field) {
    std::array<std::uint8_t, sizeof(Field)> bytes{};
    const std::size_t size = std::min(bytes.size(), rest_.size());
    std::copy_n(rest_.begin(), size, bytes.begin());
    rest_ = rest_.subspan(size);
    if constexpr (std::is_same_v<Field, bool>) {
      field = bytes[0] != 0;
    } else {
      std::memcpy(&field, bytes.data(), bytes.size());
    }
  }

  std::size_t left() const { return rest_.size(); }

 private:
  std::span<const std::uint8_t> rest_;
};

/// FNV-1a.
std::uint64_t checksumOf(std::span<const std::uint8_t> bytes) {
  std::uint64_t sum = 14695981039346656037u;
  for (const std::uint8_t byte : bytes) sum = (sum ^ byte) * 1099511628211u;
  return sum;
}

constexpr std::size_t kChecksumBytes = sizeof(std::uint64_t);

/// Whether size and checksum match the bytes.
RestoreResult check(std::span<const std::uint8_t> bytes) {
  Header header{};
  if (!bytes.empty()) std::memcpy(&header, bytes.data(), std::min(bytes.size(), sizeof header));
  const std::size_t markBytes = std::min(bytes.size(), kMark.size());
  if (!std::equal(kMark.begin(), kMark.begin() + markBytes, header.mark.begin())) {
    return RestoreResult::NoSavedInstance;
  }
  if (bytes.size() < sizeof header) return RestoreResult::EndsEarly;
  if (header.byteOrder == __builtin_bswap32(kByteOrder)) return RestoreResult::OtherByteOrder;
  if (header.byteOrder != kByteOrder) return RestoreResult::Damaged;
  if (header.version != kVersion) return RestoreResult::OtherVersion;
  if (bytes.size() < header.bytes) return RestoreResult::EndsEarly;
  if (bytes.size() > header.bytes || bytes.size() < sizeof header + kChecksumBytes) {
    return RestoreResult::Damaged;
  }
  std::uint64_t checksum = 0;
  std::memcpy(&checksum, bytes.last(kChecksumBytes).data(), kChecksumBytes);
  const bool whole = checksum == checksumOf(bytes.first(bytes.size() - kChecksumBytes));
  return whole ? RestoreResult::Restored : RestoreResult::Damaged;
}

bool isColor(std::int32_t red, std::int32_t green, std::int32_t blue) {
  return std::min({red, green, blue}) >= 0 && std::max({red, green, blue}) <= 255;
}

/// Rays are painted one by one, and their count grows with the size of the random factor.
bool isPossible(const Particle& star) {
  constexpr std::int32_t kMostRays = 6000;  // the range of their count, and of its dispersion
  return star.randomFactor >= -1.0f && star.randomFactor <= 1.0f && star.raysCount <= kMostRays &&
         isColor(star.colorR, star.colorG, star.colorB) &&
         isColor(star.terminateColorR, star.terminateColorG, star.terminateColorB);
}

bool isPossible(const SavedState& state) {
  constexpr std::int32_t kMostSteps = 1 << 30;  // far below where the counter overflows
  return state.stepCounter >= 0 && state.stepCounter <= kMostSteps &&
         std::ranges::all_of(state.stars, [](const Particle& star) { return isPossible(star); });
}

std::vector<std::uint8_t> toBytes(const SavedState& state) {
  std::vector<std::uint8_t> bytes;
  bytes.reserve(sizeof(Header) + 64 + kStarBytes * state.stars.size());
  Writer write(bytes);
  write(Header{kMark, kByteOrder, kVersion, 0});
  forFields(state, write);
  write(static_cast<std::uint64_t>(state.stars.size()));
  for (const Particle& star : state.stars) forStarFields(star, write);
  const std::uint64_t size = bytes.size() + kChecksumBytes;
  std::memcpy(bytes.data() + offsetof(Header, bytes), &size, sizeof size);
  write(checksumOf(bytes));
  return bytes;
}

/// Fills `state` when the result is Restored; else its content means nothing.
RestoreResult fromBytes(std::span<const std::uint8_t> bytes, SavedState& state) {
  const RestoreResult result = check(bytes);
  if (result != RestoreResult::Restored) return result;
  ByteReader read(bytes.subspan(sizeof(Header)));
  forFields(state, read);
  std::uint64_t count = 0;
  read(count);
  const std::size_t starBytes = read.left() - std::min(read.left(), kChecksumBytes);
  if (starBytes % kStarBytes != 0 || count != starBytes / kStarBytes) return RestoreResult::Damaged;
  state.stars.resize(static_cast<std::size_t>(count));
  for (Particle& star : state.stars) forStarFields(star, read);
  return isPossible(state) ? RestoreResult::Restored : RestoreResult::Damaged;
}

}  // namespace

std::vector<std::uint8_t> saveState(const FrameState& state) {
  return toBytes({state.stepCounter, state.emissionAccumulator, state.random.state(), state.sprites,
                  std::vector<Particle>(state.stars, state.stars + state.starCount)});
}

RestoreResult restoreState(std::span<const std::uint8_t> bytes, const FrameState& state) try {
  SavedState saved;
  const RestoreResult result = fromBytes(bytes, saved);
  if (result != RestoreResult::Restored) return result;
  const auto count = static_cast<std::int32_t>(saved.stars.size());
  if (count > state.capacity && !resizeStars(state, count)) return RestoreResult::OutOfMemory;
  std::copy_n(saved.stars.begin(), count, state.stars);
  state.starCount = count;
  state.stepCounter = saved.stepCounter;
  state.emissionAccumulator = saved.emissionAccumulator;
  state.random.seedRandom(saved.randomState);
  state.sprites = saved.sprites;
  return result;
} catch (const std::bad_alloc&) {
  return RestoreResult::OutOfMemory;
}

}  // namespace brisel
