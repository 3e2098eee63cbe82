// A thumbnail is a promise: one click gives what it shows. Every preset is rendered as its
// thumbnail was, and the light in both pictures compared.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <fstream>
#include <iterator>
#include <map>
#include <sstream>

#include "cli/pipeline/scene_renderer.h"

namespace {

using Color = std::array<double, 3>;  // red, green, blue, 0..255

const std::filesystem::path kLibrary = SOURCE_FOLDER "/library";

constexpr int kWidth = 88;
constexpr int kHeight = 65;
constexpr Color kBackdrop{8, 10, 20};

// A line of library/thumbnails/cuts.txt.
struct Cut {
  std::string preset, scene;
  int frame = 0, left = 0, top = 0, width = 0;
};

std::map<std::string, Cut> readCuts() {
  std::ifstream file(kLibrary / "thumbnails/cuts.txt");
  std::map<std::string, Cut> cuts;
  for (std::string line; std::getline(file, line);) {
    if (line.starts_with('#')) continue;
    Cut cut;
    std::istringstream(line) >> cut.preset >> cut.scene >> cut.frame >> cut.left >> cut.top >>
        cut.width;
    cuts[cut.preset] = cut;
  }
  return cuts;
}

// The preset's thumbnail, or a frame in its place: top row first.
using Picture = std::vector<Color>;

// An uncompressed bitmap of 24 bits, whose rows need no padding at this width.
Picture readThumbnail(const std::string& preset) {
  std::ifstream file(kLibrary / "Corvane/Drizzen" / (preset + ".bmp"), std::ios::binary);
  const std::string bytes{std::istreambuf_iterator<char>(file), {}};
  constexpr std::size_t kHeader = 54;
  Picture picture(kWidth * kHeight);
  if (bytes.size() < kHeader + 3 * picture.size()) return picture;
  for (std::size_t i = 0; i < picture.size(); ++i) {
    const std::size_t row = kHeight - 1 - i / kWidth;
    for (std::size_t channel = 0; channel < 3; ++channel) {
      const std::size_t at = kHeader + 3 * (row * kWidth + i % kWidth) + 2 - channel;
      picture[i][channel] = static_cast<std::uint8_t>(bytes[at]);
    }
  }
  return picture;
}

double toLight(double value) {
  return std::pow(value / 255, 2.2);
}
double fromLight(double light) {
  return 255 * std::pow(light, 1 / 2.2);
}

// The cut over the backdrop, averaged in linear light. `scale` is that of the frame to the layer.
Picture reduce(const cli::Frame& frame, const Cut& cut, double scale) {
  const double cell = scale * cut.width / kWidth;
  Picture picture(kWidth * kHeight);
  for (int i = 0; i < kWidth * kHeight; ++i) {
    const int row = i / kWidth;
    const double left = scale * cut.left + cell * (i % kWidth);
    const double top = scale * cut.top + cell * row;
    Color light{};
    double count = 0;
    for (int y = static_cast<int>(top); y < std::max(top + cell, std::floor(top) + 1); ++y) {
      for (int x = static_cast<int>(left); x < std::max(left + cell, std::floor(left) + 1); ++x) {
        const std::uint8_t* pixel = frame.row(y) + 4 * x;
        for (std::size_t c = 0; c < 3; ++c) {
          light[c] += toLight(kBackdrop[c] + (pixel[c] - kBackdrop[c]) * pixel[3] / 255);
        }
        ++count;
      }
    }
    for (std::size_t c = 0; c < 3; ++c) {
      picture[static_cast<std::size_t>(i)][c] = fromLight(light[c] / count);
    }
  }
  return picture;
}

// The frame that the thumbnail is cut from. At half of the full resolution it looks the same and
// costs a quarter, but for the circles of "Round" oscillations, which are in rendered pixels.
Picture render(const Cut& cut) {
  const bool isRound = cut.preset == "orbit" || cut.preset == "fireflies";
  cli::SceneOptions options;
  options.presets = {cut.preset};
  options.allowed = {SOURCE_FOLDER "/examples/media"};
  if (!isRound) options.scale = "1/2";
  const auto scene = kLibrary / "thumbnails" / (cut.scene + ".toml");
  cli::SceneRenderer renderer(cli::planScene(cli::readScene(scene, options), options));
  for (int frame = 0; frame < cut.frame; ++frame) {
    renderer.stepNext(renderer.readNext());
  }
  hostkit::World output = renderer.newOutput();
  renderer.renderNext(renderer.readNext(), output);
  cli::Frame picture;
  copyFromWorld(output, picture);
  return reduce(picture, cut, isRound ? 1 : 0.5);
}

struct Light {
  Color mean{};         // above the backdrop
  double coverage = 0;  // share of the pixels that are clearly brighter than the backdrop
  double x = 0, y = 0;  // where the middle of the light lies, pixels
  double spread = 0;    // how far from there it lies on average, pixels
};

Light lightOf(const Picture& picture) {
  Light light;
  double total = 0;
  double squares = 0;
  for (std::size_t i = 0; i < picture.size(); ++i) {
    double above = 0;
    double most = 0;
    for (std::size_t c = 0; c < 3; ++c) {
      const double difference = std::max(0.0, picture[i][c] - kBackdrop[c]);
      light.mean[c] += difference / static_cast<double>(picture.size());
      above += difference;
      most = std::max(most, difference);
    }
    const std::size_t row = i / kWidth;
    const auto x = static_cast<double>(i % kWidth);
    const auto y = static_cast<double>(row);
    light.coverage += most > 30 ? 1 / static_cast<double>(picture.size()) : 0;
    light.x += above * x;
    light.y += above * y;
    squares += above * (x * x + y * y);
    total += above;
  }
  light.x /= total;
  light.y /= total;
  light.spread = std::sqrt(squares / total - light.x * light.x - light.y * light.y);
  return light;
}

// Generous: at another resolution the stars lie elsewhere.
testing::AssertionResult resemble(const Light& one, const Light& other) {
  const double brightness = std::ranges::max(one.mean);
  for (std::size_t c = 0; c < 3; ++c) {
    if (std::abs(one.mean[c] - other.mean[c]) > 1.5 + 0.4 * brightness) {
      return testing::AssertionFailure()
             << "mean of channel " << c << " is " << one.mean[c] << " and " << other.mean[c];
    }
  }
  if (std::abs(std::log(one.coverage / other.coverage)) > std::log(1.6)) {
    return testing::AssertionFailure()
           << "coverage is " << one.coverage << " and " << other.coverage;
  }
  if (std::hypot(one.x - other.x, one.y - other.y) > 8) {
    return testing::AssertionFailure() << "the middle is (" << one.x << ", " << one.y << ") and ("
                                       << other.x << ", " << other.y << ")";
  }
  if (std::abs(std::log(one.spread / other.spread)) > std::log(1.25)) {
    return testing::AssertionFailure() << "spread is " << one.spread << " and " << other.spread;
  }
  return testing::AssertionSuccess();
}

// Of one row of the effect controls, in their order.
std::vector<Cut> cutsOfRow(std::size_t row) {
  std::map<std::string, Cut> cuts = readCuts();
  const scene::PresetLibrary library = cli::presetsBeside(cli::findModule(""));
  std::vector<Cut> inRow;
  for (const scene::Preset& preset : library.presets()) {
    if (preset.row == row) inRow.push_back(cuts.at(preset.name));
  }
  return inRow;
}

class PresetLooks : public testing::TestWithParam<std::size_t> {};

TEST_P(PresetLooks, OneClickGivesWhatTheThumbnailShows) {
  const std::vector<Cut> cuts = cutsOfRow(GetParam());
  ASSERT_FALSE(cuts.empty()) << "no presets beside the module";
  for (const Cut& cut : cuts) {
    EXPECT_TRUE(resemble(lightOf(readThumbnail(cut.preset)), lightOf(render(cut)))) << cut.preset;
  }
}

INSTANTIATE_TEST_SUITE_P(OfRow, PresetLooks, testing::Range<std::size_t>(0, 2));

}  // namespace
