#include "cli/media/clip_timing.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numeric>
#include <span>

namespace cli {
namespace {

using Ticks = std::int64_t;

// Rates that cameras and screens have; a measured rate this close is taken for one of them.
constexpr std::array<scene::FrameRate, 14> kUsualRates = {{{24000, 1001},
                                                           {24, 1},
                                                           {25, 1},
                                                           {30000, 1001},
                                                           {30, 1},
                                                           {48, 1},
                                                           {50, 1},
                                                           {60000, 1001},
                                                           {60, 1},
                                                           {100, 1},
                                                           {120000, 1001},
                                                           {120, 1},
                                                           {15, 1},
                                                           {240, 1}}};

bool isNear(scene::FrameRate rate, double perSecond) {
  return std::abs(rate.perSecond() - perSecond) <= 0.002 * perSecond;
}

// Clocks of whole milliseconds and phones' cameras give steps that are nearly the same.
Ticks tolerance(Ticks step) {
  return std::max<Ticks>(1, step / 10);
}

struct UsualStep {
  double ticks = 0;       // their mean
  std::size_t count = 0;  // how many of the steps are that long
};

// Of ascending steps, the size that most of them have; the shorter one of equally frequent sizes,
// since a rate that is too high loses no picture.
UsualStep usualStep(std::span<const Ticks> steps) {
  std::span<const Ticks> most;
  for (auto step = steps.begin(); step != steps.end();
       step = std::upper_bound(step, steps.end(), *step)) {
    const auto first = std::lower_bound(steps.begin(), step, *step - tolerance(*step));
    const auto end = std::upper_bound(step, steps.end(), *step + tolerance(*step));
    if (static_cast<std::size_t>(end - first) > most.size()) most = {first, end};
  }
  const double sum = std::accumulate(most.begin(), most.end(), 0.0);
  return {sum / static_cast<double>(most.size()), most.size()};
}

// What is declared is exact where it agrees with what the pictures do.
scene::FrameRate rateNear(double perSecond, const DeclaredTiming& declared) {
  for (const auto& rate : {declared.nominal, declared.average}) {
    if (rate && isNear(*rate, perSecond)) return *rate;
  }
  const auto nearest = std::ranges::min_element(
      kUsualRates, {},
      [perSecond](scene::FrameRate rate) { return std::abs(rate.perSecond() - perSecond); });
  if (isNear(*nearest, perSecond)) return *nearest;
  return scene::frameRateFromNumber(std::clamp(perSecond, 0.001, scene::kMaxFramesPerSecond))
      .value();
}

}  // namespace

ClipTiming timingOf(std::vector<PictureTime> pictures, const DeclaredTiming& declared) {
  std::ranges::sort(pictures, {}, &PictureTime::start);
  std::vector<Ticks> steps;
  for (std::size_t i = 1; i < pictures.size(); ++i) {
    const Ticks step = pictures[i].start - pictures[i - 1].start;
    if (step > 0) steps.push_back(step);
  }
  const PictureTime& last = pictures.back();
  if (steps.empty() && last.duration > 0) steps.push_back(last.duration);

  ClipTiming timing;
  timing.rate =
      declared.average ? *declared.average : declared.nominal.value_or(scene::FrameRate{});
  timing.start = static_cast<double>(pictures.front().start) * declared.tick;
  double lastStep = 1 / timing.rate.perSecond();
  if (!steps.empty()) {
    std::ranges::sort(steps);
    const UsualStep usual = usualStep(steps);
    timing.isVariable = usual.count < steps.size();
    lastStep = usual.ticks * declared.tick;
    timing.rate = rateNear(1 / lastStep, declared);
  }
  if (last.duration > 0) lastStep = static_cast<double>(last.duration) * declared.tick;
  timing.seconds =
      static_cast<double>(last.start - pictures.front().start) * declared.tick + lastStep;
  return timing;
}

}  // namespace cli
