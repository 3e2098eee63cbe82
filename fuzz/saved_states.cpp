// Saved instances: any bytes are restored or refused, and what was restored goes on as what was
// saved would have.
#include <algorithm>
#include <cstring>
#include <vector>

#include "bytes.h"
#include "effect/instance.h"
#include "effect/values.h"
#include "render/painter.h"
#include "target.h"

namespace {

using namespace brisel;
using State = std::vector<std::uint8_t>;

constexpr std::int32_t kWidth = 30;
constexpr std::int32_t kHeight = 22;

/// A few values, of any number or of one that the parameter may have. Little to paint.
Values someValues(fuzz::Bytes& bytes) {
  Values values({kWidth, kHeight});
  values.setNumber(kIntensity, 8);
  for (int count = bytes.integerIn(0, 12); count > 0; --count) {
    const int index = bytes.integerIn(1, kParamCount - 1);
    const ParameterSpec& spec = parameterSpec(index);
    if (bytes.integerIn(0, 7) == 0) {
      values[index] = {bytes.integer<std::int32_t>(), bytes.integer<std::int32_t>()};
    } else if (spec.kind == ParamKind::Popup) {
      values[index].number = bytes.integerIn(0, 13);
    } else {
      const double share = bytes.integer<std::uint8_t>() / 255.0;
      values.setNumber(static_cast<ParamIndex>(index),
                       spec.sliderMin + share * (spec.sliderMax - spec.sliderMin));
    }
  }
  const auto atMost = [&](ParamIndex index, std::int32_t most) {
    values[index].number = std::min(values[index].number, most);
  };
  atMost(kMaximumNumberOfStars, 24);
  atMost(kRaysCount, 30);
  atMost(kRaysCountDispersion, 1 << 16);
  return values;
}

/// An instance over the same small picture, frame after frame.
struct Clip {
  explicit Clip(const Values& sceneValues, bool isDeep)
      : values(sceneValues), format(isDeep ? PixelFormat::Argb16 : PixelFormat::Argb8) {
    pixels.resize(static_cast<std::size_t>(kHeight * rowBytes()));
    input.resize(pixels.size());
    for (std::size_t i = 0; i < input.size(); ++i) input[i] = static_cast<std::uint8_t>(i * i / 9);
    if (isDeep) {
      for (std::size_t i = 1; i < input.size(); i += 2) input[i] &= 0x7F;  // on the scale
    }
  }
  std::ptrdiff_t rowBytes() const { return kWidth * (format == PixelFormat::Argb16 ? 8 : 4); }
  FrameViews views() {
    return {.output = {pixels.data(), kWidth, kHeight, rowBytes(), format},
            .input = {input.data(), kWidth, kHeight, rowBytes(), format},
            .painter = &painter};
  }
  void frame(bool isPainted) {
    constexpr std::int32_t kLater = 1;  // 0 would start anew
    fuzz::require(isPainted ? instance.render(values, kLater, views())
                            : instance.step(values, kLater, views()),
                  "a frame can be had");
  }

  Values values;
  PixelFormat format;
  std::vector<std::uint8_t> pixels;
  std::vector<std::uint8_t> input;
  Painter painter;
  Instance instance;
};

template <class Number>
void put(State& state, std::size_t offset, Number number) {
  if (offset + sizeof number <= state.size()) {
    std::memcpy(state.data() + offset, &number, sizeof number);
  }
}

/// Some of the bytes changed; any of them, or a number of a star.
void change(fuzz::Bytes& bytes, State& state) {
  constexpr std::size_t kFirstStar = 24 + 12 + 22 + 8;
  constexpr std::size_t kStarBytes = 87;
  constexpr int kNumbers[] = {0,  4,  8,  12, 16, 20, 24, 28, 32, 36, 40,
                              44, 51, 55, 59, 63, 67, 71, 75, 79, 83};
  constexpr int kRays = 20;
  for (int count = bytes.integerIn(0, 6); count > 0; --count) {
    if (bytes.flag()) {
      put(state, bytes.integer<std::uint16_t>() % (kFirstStar + 3 * kStarBytes),
          bytes.integer<std::uint8_t>());
      continue;
    }
    const int number = bytes.oneOf(kNumbers);
    const std::size_t offset = kFirstStar +
                               static_cast<std::size_t>(bytes.integerIn(0, 30)) * kStarBytes +
                               static_cast<std::size_t>(number);
    if (number < kRays || number > 44) {
      put(state, offset, bytes.real());
    } else {
      put(state, offset, std::int32_t{bytes.integerIn(-1, 300)});
    }
  }
}

/// The checksum at its end made that of the bytes.
void seal(State& state) {
  if (state.size() < sizeof(std::uint64_t)) return;
  std::uint64_t sum = 14695981039346656037u;
  const std::size_t end = state.size() - sizeof sum;
  for (std::size_t i = 0; i < end; ++i) sum = (sum ^ state[i]) * 1099511628211u;
  put(state, end, sum);
}

}  // namespace

void fuzz::runInput(std::span<const std::uint8_t> input) {
  Bytes bytes(input);
  const bool isDeep = bytes.flag();
  const Values values = someValues(bytes);
  Clip original(values, isDeep);
  for (int frames = bytes.integerIn(0, 6); frames > 0; --frames) original.frame(bytes.flag());
  const State saved = original.instance.save();
  State given = saved;
  if (bytes.flag()) change(bytes, given);
  if (bytes.integerIn(0, 7) == 0) given.resize(bytes.integer<std::uint16_t>() % 400);
  if (bytes.integerIn(0, 7) != 0) seal(given);
  if (bytes.integerIn(0, 7) == 0) {
    const auto any = bytes.takeAll();
    given.assign(any.begin(), any.end());
  }

  Clip restored(values, isDeep);
  restored.frame(false);
  const State before = restored.instance.save();
  const RestoreResult result = restored.instance.restore(given);
  require(!describe(result).empty(), "every result is told");
  if (result != RestoreResult::Restored) {
    require(given != saved, "what was saved can be restored");
    require(restored.instance.save() == before, "refused bytes change nothing");
    return;
  }
  Clip again(values, isDeep);
  again.painter.useKernels(kPlainKernels);
  const State taken = restored.instance.save();
  require(given != saved || taken == saved, "what was saved is restored");
  require(again.instance.restore(taken) == RestoreResult::Restored, "what was restored is saved");
  Clip copied(values, isDeep);
  copied.instance = restored.instance;
  for (int frame = 0; frame < 3; ++frame) {
    restored.frame(true);
    again.frame(true);
    copied.frame(false);
    require(again.pixels == restored.pixels, "it goes on with the same frames by any kernels");
    if (given != saved) continue;
    original.frame(true);
    require(original.pixels == restored.pixels, "they are those of an instance without a pause");
  }
  require(again.instance.save() == restored.instance.save(), "it goes on with the same stars");
  require(copied.instance.save() == restored.instance.save(), "so does a copy without pictures");
}
