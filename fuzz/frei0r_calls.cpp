// The frei0r filter's functions, called in any order, with any parameter, setting, size and time,
// for several instances.
extern "C" {
#include <frei0r.h>
}

#include <algorithm>
#include <array>
#include <bit>
#include <cfenv>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <limits>
#include <optional>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "bytes.h"
#include "frei0r/filter_parameters.h"
#include "scene/frame_rate.h"
#include "target.h"

namespace {

using brisel::filterParameters;
using fuzz::Bytes;
using fuzz::require;
using Kind = brisel::FilterParameter::Kind;
using Setting = std::variant<double, f0r_param_color_t, std::string>;

constexpr std::uint32_t kGuard = 0xA55A3CC3;
constexpr std::size_t kGuards = 16;

/// Calls as a host that rounds its own way, and keeps what the filter says of texts that it cannot
/// read from among the fuzzer's own lines.
template <class Call>
void callStrictly(const Call& call) {
  static std::FILE* const nowhere = std::fopen("/dev/null", "w");
  std::FILE* const errors = std::exchange(stderr, nowhere);
  std::fesetround(FE_UPWARD);
  call();
  const bool isKept = std::fegetround() == FE_UPWARD;
  std::fesetround(FE_TONEAREST);
  stderr = errors;
  require(isKept, "the host's rounding mode stays");
}

int indexOf(brisel::ParamIndex parameter) {
  const auto all = filterParameters();
  const auto found = std::find_if(all.begin(), all.end(),
                                  [&](const auto& each) { return each.index == parameter; });
  return static_cast<int>(found - all.begin());
}

double hostNumberOf(brisel::ParamIndex parameter, double number) {
  return brisel::hostNumber(filterParameters()[static_cast<std::size_t>(indexOf(parameter))],
                            number);
}

/// What would take long to paint is held to a few stars with few rays; by not-a-number, too, which
/// would leave their number to a scene.
double bounded(brisel::ParamIndex index, double number) {
  const auto atMost = [&](double most) {
    return number < hostNumberOf(index, most) ? number : hostNumberOf(index, most);
  };
  switch (index) {
    case brisel::kMaximumNumberOfStars:
      return atMost(24);
    case brisel::kRaysCount:
    case brisel::kRaysCountDispersion:
      return atMost(25);
    default:
      return number;
  }
}

double anyNumber(Bytes& bytes) {
  switch (bytes.integerIn(0, 3)) {
    case 0:
      return std::bit_cast<double>(bytes.integer<std::uint64_t>());
    case 1:
      return double{bytes.real()};
    default:
      return bytes.integer<std::uint8_t>() / 255.0;
  }
}

std::string anyText(Bytes& bytes, std::size_t parameter) {
  static const std::string scenes = EXAMPLE_SCENES;
  const auto parameters = filterParameters();
  if (bytes.integerIn(0, 3) == 0) {
    const auto text = bytes.take(static_cast<std::size_t>(bytes.integerIn(0, 40)));
    return {text.begin(), text.end()};
  }
  if (parameter == brisel::kSceneParameter) {
    const char* const names[] = {"", "embers.toml", "fireworks.toml", "star_logo.toml", "nothing",
                                 "."};
    const std::string name = bytes.oneOf(names);
    return name.empty() ? name : scenes + name;
  }
  if (parameter == brisel::kPresetsParameter) {
    return bytes.oneOf({"", "sparkler", "comet, snowfall", "lens-flare none", "nothing", ",,"});
  }
  if (parameter + 1 == parameters.size()) {
    return bytes.oneOf({"", "25", "30000/1001", "60", "0", "-3", "1/0", "fast", "1e9"});
  }
  return std::to_string(bytes.integerIn(-1, 14));
}

/// A time to which no more than some hundred frames lead: of a clip, or of none.
double anyTime(Bytes& bytes) {
  using Limits = std::numeric_limits<double>;
  switch (bytes.integerIn(0, 7)) {
    case 0:
      return bytes.oneOf({-1.0, -1e300, 1e13, 1e300, Limits::max(), Limits::infinity(),
                          -Limits::infinity(), Limits::quiet_NaN(), Limits::denorm_min(), -0.0});
    case 1:
      return bytes.integerIn(0, 6);  // milliseconds, or seconds
    case 2: {
      const double any = std::bit_cast<double>(bytes.integer<std::uint64_t>());
      return std::abs(any) < 1e12 ? std::fmod(any, 6.0) : any;
    }
    default:
      return bytes.integerIn(0, 127) / bytes.oneOf({25.0, 29.97, 60.0});
  }
}

/// A filter and the picture that it draws on.
class Clip {
 public:
  Clip(unsigned width, unsigned height, std::uint32_t pattern)
      : width_(width),
        height_(height),
        pattern_(pattern),
        filter_(f0r_construct(width, height)),
        picture_(std::size_t{width} * height) {
    require(filter_ != nullptr, "there is a filter of that size");
    for (std::uint32_t& pixel : picture_) pixel = pattern = pattern * 1664525u + 1013904223u;
    set(indexOf(brisel::kMaximumNumberOfStars), hostNumberOf(brisel::kMaximumNumberOfStars, 20));
    set(indexOf(brisel::kRaysCount), hostNumberOf(brisel::kRaysCount, 5));
  }
  ~Clip() { f0r_destruct(filter_); }
  Clip(const Clip&) = delete;
  Clip& operator=(const Clip&) = delete;

  void step(Bytes& bytes) {
    switch (bytes.integerIn(0, 7)) {
      case 0:
        return callWithoutSense(bytes);
      case 1:
      case 2:
      case 3:
        return set(bytes);
      default:
        return update(anyTime(bytes), bytes.flag());
    }
  }

  /// A frame follows from settings and time, whatever frames were drawn before: where a rate is
  /// told, the time is surely in seconds, and the settings were the same from the first frame on.
  void checkAgainstFreshFilter() const {
    const bool isTold = scene::frameRateFromText(rate_).has_value();
    if (drawn_.empty() || isEdited_ || !isTold || !(time_ >= 0 && time_ < 1)) return;
    Clip fresh(width_, height_, pattern_);
    for (const auto& [index, setting] : settings_) fresh.set(index, setting);
    fresh.update(time_, false);
    require(fresh.drawn_ == drawn_, "a frame does not depend on those that were asked for before");
  }

 private:
  void callWithoutSense(Bytes& bytes) {
    const auto count = static_cast<int>(filterParameters().size());
    const int index = bytes.flag() ? bytes.integer<std::int32_t>() : bytes.integerIn(-1, count);
    const bool isParameter = index >= 0 && index < count;
    f0r_param_info_t info{};
    f0r_get_param_info(&info, index);
    require((info.name != nullptr) == isParameter, "parameters have names, and nothing else has");
    double number = 0;
    f0r_get_param_value(nullptr, &number, index);
    f0r_get_param_value(filter_, nullptr, index);
    f0r_set_param_value(nullptr, &number, index);
    f0r_set_param_value(filter_, nullptr, index);
    if (!isParameter) f0r_set_param_value(filter_, &number, index);
    f0r_update(nullptr, 0, picture_.data(), picture_.data());
    f0r_update(filter_, 0, nullptr, picture_.data());
    f0r_update2(filter_, 0, picture_.data(), nullptr, nullptr, nullptr);
    f0r_destruct(nullptr);
    f0r_plugin_info_t plugin{};
    f0r_get_plugin_info(&plugin);
    require(plugin.num_params == count, "parameters are counted");
    const unsigned size = 32768 + bytes.integer<std::uint32_t>() / 2;
    require(f0r_construct(size, 1) == nullptr && f0r_construct(0, size) == nullptr,
            "there is no filter of a size that no frame has");
    f0r_deinit();
    require(f0r_init() != 0, "it is set up once more");
  }

  void set(Bytes& bytes) {
    const auto last = static_cast<int>(filterParameters().size()) - 1;
    const int index = bytes.integerIn(0, 7) == 0 ? last : bytes.integerIn(0, last);
    const auto& parameter = filterParameters()[static_cast<std::size_t>(index)];
    switch (parameter.kind) {
      case Kind::Number:
      case Kind::Checkbox:
        return set(index, bounded(parameter.index, anyNumber(bytes)));
      case Kind::Color:
        return set(index, f0r_param_color_t{bytes.real(), bytes.real(), bytes.real()});
      case Kind::Text:
        return set(index, anyText(bytes, static_cast<std::size_t>(index)));
    }
  }

  void set(int index, const Setting& setting) {
    if (const auto* text = std::get_if<std::string>(&setting)) {
      std::string given = *text;
      char* characters = given.data();
      callStrictly([&] { f0r_set_param_value(filter_, &characters, index); });
      std::fill(given.begin(), given.end(), '?');  // nobody said that it stays
      f0r_get_param_value(filter_, &characters, index);
      require(std::strcmp(characters, text->c_str()) == 0, "a text is what it was set to");
      if (static_cast<std::size_t>(index) + 1 == filterParameters().size()) rate_ = characters;
    } else if (const auto* number = std::get_if<double>(&setting)) {
      double given = *number;
      callStrictly([&] { f0r_set_param_value(filter_, &given, index); });
      f0r_get_param_value(filter_, &given, index);
      require(given == *number || std::isnan(*number), "a number is what it was set to");
    } else {
      f0r_param_color_t given = std::get<f0r_param_color_t>(setting);
      callStrictly([&] { f0r_set_param_value(filter_, &given, index); });
    }
    if (!drawn_.empty()) isEdited_ = true;
    settings_.emplace_back(index, setting);
  }

  void update(double time, bool isInPlace) {
    std::vector<std::uint32_t> guarded(picture_.size() + 2 * kGuards, kGuard);
    const auto output = guarded.begin() + kGuards;
    const std::vector<std::uint32_t> before = picture_;
    if (isInPlace) std::copy(picture_.begin(), picture_.end(), output);
    callStrictly(
        [&] { f0r_update(filter_, time, isInPlace ? &*output : picture_.data(), &*output); });
    require(picture_ == before, "the clip is not written");
    for (std::size_t i = 0; i < kGuards; ++i) {
      require(guarded[i] == kGuard && guarded[guarded.size() - 1 - i] == kGuard,
              "nothing is written outside of the frame");
    }
    drawn_.assign(output, guarded.end() - kGuards);
    time_ = time;
  }

  unsigned width_, height_;
  std::uint32_t pattern_;
  f0r_instance_t filter_;
  std::vector<std::uint32_t> picture_;
  std::vector<std::pair<int, Setting>> settings_;
  std::string rate_;
  bool isEdited_ = false;             // after a frame was drawn
  std::vector<std::uint32_t> drawn_;  // last, and at which time
  double time_ = 0;
};

}  // namespace

void fuzz::runInput(std::span<const std::uint8_t> input) {
  constexpr int kMostSteps = 24;
  Bytes bytes(input);
  std::array<std::optional<Clip>, 2> clips;
  for (int step = 0; step < kMostSteps && !bytes.empty(); ++step) {
    auto& clip = clips[bytes.flag() ? 1 : 0];
    if (!clip) {
      clip.emplace(static_cast<unsigned>(bytes.integerIn(0, 24)),
                   static_cast<unsigned>(bytes.integerIn(0, 18)), bytes.integer<std::uint32_t>());
    }
    clip->step(bytes);
    if (bytes.integerIn(0, 31) == 0) clip.reset();
  }
  for (const auto& clip : clips) {
    if (clip) clip->checkAgainstFreshFilter();
  }
}
