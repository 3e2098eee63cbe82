#include "core_model.h"

#include <algorithm>
#include <numeric>

#include "clock.h"

namespace bench {
namespace {

/// Each part goes to the core that is free first, as in a pool of threads.
double roundSeconds(const std::vector<double>& parts, int cores, double wake) {
  std::vector<double> freeAt(static_cast<std::size_t>(cores), wake);
  freeAt.front() = 0.0;
  double end = 0.0;
  for (const double part : parts) {
    double& core = *std::ranges::min_element(freeAt);
    core += part;
    end = std::max(end, core);
  }
  return end;
}

}  // namespace

double MeasuredFrame::partsInAll() const {
  double sum = 0.0;
  for (const auto& parts : rounds) sum = std::accumulate(parts.begin(), parts.end(), sum);
  return sum;
}

MeasuredFrame measureFrame(Stages& scene, const brisel::MutableImageView& output, int threads,
                           brisel::SpriteList& sprites) {
  MeasuredFrame frame;
  brisel::PixelGrid grid;
  bool isFirst = true;
  const auto paint = [&](bool isLast) {
    const brisel::PaintTarget target{.output = output, .mix = scene.mix()};
    const brisel::Portion portion{.isFirst = isFirst, .isLast = isLast};
    isFirst = false;
    auto& rays = frame.rounds.emplace_back();
    for (std::int32_t part = 0; part < sprites.partCount(); ++part) {
      rays.push_back(secondsOf([&] { sprites.buildRaysIn(part); }));
    }
    auto& bands = frame.rounds.emplace_back();
    for (const std::int32_t band : sprites.bandsDearestFirst()) {
      bands.push_back(secondsOf(
          [&] { paintBand(target, portion, sprites, band, brisel::kernelsNamed(nullptr), grid); }));
    }
  };
  const double all = secondsOf([&] {
    scene.step();
    sprites.begin({output.width, output.height}, brisel::rowsPerBand(output, threads),
                  [&] { paint(false); });
    scene.compose(&sprites);
    paint(true);
  });
  frame.serial = all - frame.partsInAll();
  return frame;
}

Prediction& Prediction::operator+=(const Prediction& other) {
  serial += other.serial;
  wake += other.wake;
  uneven += other.uneven;
  painted += other.painted;
  return *this;
}

Prediction predict(const MeasuredFrame& frame, int cores, double wake) {
  Prediction prediction{.serial = frame.serial, .painted = frame.partsInAll() / cores};
  double atOnce = 0.0, late = 0.0;
  for (const auto& parts : frame.rounds) {
    atOnce += roundSeconds(parts, cores, 0.0);
    late += roundSeconds(parts, cores, wake);
  }
  prediction.wake = late - atOnce;
  prediction.uneven = atOnce - prediction.painted;
  return prediction;
}

}  // namespace bench
