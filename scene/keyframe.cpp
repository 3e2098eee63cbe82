#include "scene/keyframe.h"

#include <array>
#include <utility>

#include "scene/text/errors.h"
#include "scene/text/numbers.h"

namespace scene {
namespace {

const std::array<std::pair<const char*, Ease>, 5> kEases{{{"linear", {}},
                                                          {"hold", {true}},
                                                          {"in", {false, 0.42, 0, 1, 1}},
                                                          {"out", {false, 0, 0, 0.58, 1}},
                                                          {"in-out", {false, 0.42, 0, 0.58, 1}}}};

// One coordinate of the curve from 0 to 1 with the inner control points a and b, at t.
double bezier(double a, double b, double t) {
  const double u = 1 - t;
  return 3 * u * u * t * a + 3 * u * t * t * b + t * t * t;
}

}  // namespace

double Ease::share(double time) const {
  if (hold) return 0;
  if (isStraight() || time == 0) return time;
  // Time only grows along the curve, so bisection finds the place.
  double low = 0;
  double high = 1;
  for (int i = 0; i < 52; ++i) {
    const double middle = (low + high) / 2;
    (bezier(x1, x2, middle) < time ? low : high) = middle;
  }
  return bezier(y1, y2, high);
}

std::optional<Ease> easeByName(std::string_view name) {
  const auto found = std::ranges::find(kEases, name, &decltype(kEases)::value_type::first);
  return found == kEases.end() ? std::nullopt : std::optional(found->second);
}

const std::vector<std::string>& easeNames() {
  static const std::vector<std::string> names = [] {
    std::vector<std::string> all;
    for (const auto& [name, ease] : kEases) all.emplace_back(name);
    return all;
  }();
  return names;
}

std::optional<double> secondsFromText(std::string_view text) {
  text = trimmed(text);
  if (!text.ends_with('s')) return std::nullopt;
  return parseNumber(text.substr(0, text.size() - 1));
}

std::string timeText(const Keyframe& key) {
  return key.inSeconds ? numberText(key.time) + "s" : "frame " + numberText(key.time);
}

void countInFrames(Keyframe& key, const Keyframe* before, FrameRate rate,
                   const std::string& label) {
  const std::string written = key.inSeconds ? " (" + timeText(key) + ")" : "";
  if (key.inSeconds) key.time = key.time * rate.frames / rate.seconds;
  key.inSeconds = false;
  if (before && key.time <= before->time) {
    throw WorkError(key.place + ": " + inQuotes(label) + ": the keyframe at " + timeText(key) +
                    written + " does not come after the one at " + timeText(*before));
  }
}

}  // namespace scene
