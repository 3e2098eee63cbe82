#include "tests/plugin/hosted_effect.h"

#include <algorithm>
#include <cstring>
#include <vector>

namespace tests {

using hostkit::Depth;
using hostkit::RenderRequest;
using hostkit::Session;
using hostkit::World;

namespace {

constexpr int kFullScale16 = 32768;

template <class Pixel>
void paintPattern(std::span<Pixel> row, A_long y, int fullScale) {
  using Channel = decltype(Pixel::red);
  for (std::size_t x = 0; x < row.size(); ++x) {
    const int at = static_cast<int>(x) * 37 + y * 101;
    const auto channel = [&](int factor) {
      return static_cast<Channel>(at * factor % (fullScale + 1));
    };
    row[x] = {at % 5 == 0 ? Channel{0} : channel(211), channel(97), channel(59), channel(31)};
  }
}

bool withinFullScale(const World& world) {
  if (world.depth() == Depth::Bits8) return true;
  for (A_long y = 0; y < world.height(); ++y) {
    for (const PF_Pixel16& pixel : world.row16(y)) {
      if (std::max({pixel.alpha, pixel.red, pixel.green, pixel.blue}) > kFullScale16) return false;
    }
  }
  return true;
}

}  // namespace

const hostkit::Module& theModule() {
  static const hostkit::Module module = hostkit::Module::load(BRISEL_MODULE_PATH);
  return module;
}

void openWithDefaults(Session& session, const FrameShape& shape) {
  session.open();
  session.parameters().resetToDefaults(shape.width, shape.height);
}

PF_ParamIndex indexOf(const Session& session, std::string_view label) {
  const hostkit::Parameter* parameter = session.parameters().find(label);
  if (parameter == nullptr) throw hostkit::Error("no parameter " + std::string(label));
  return parameter->index;
}

void set(Session& session, std::string_view label, double value) {
  hostkit::ParameterSet& parameters = session.parameters();
  const PF_ParamIndex index = indexOf(session, label);
  switch (parameters.list()[static_cast<std::size_t>(index)].type()) {
    case PF_Param_POPUP:
      return parameters.setItem(index, static_cast<int>(value));
    case PF_Param_CHECKBOX:
      return parameters.setChecked(index, value != 0);
    default:
      return parameters.setNumber(index, value);
  }
}

void emitDots(Session& session, int count) {
  for (const auto& [label, value] : {std::pair("Type", 1),
                                     {"Initial speed", 0},
                                     {"Terminate type", 1},
                                     {"Maximum number of stars", 30000}}) {
    set(session, label, value);
  }
  set(session, "Intensity", 2 * count);  // the slider counts half stars
}

World patternedInput(const FrameShape& shape) {
  World world(shape.width, shape.height, shape.depth, shape.input);
  for (A_long y = 0; y < shape.height; ++y) {
    if (shape.depth == Depth::Bits16) {
      paintPattern(world.row16(y), y, kFullScale16);
    } else {
      paintPattern(world.row8(y), y, 255);
    }
  }
  return world;
}

World renderFrame(Session& session, const FrameShape& shape, A_long frame) {
  return renderFrame(session, shape, RenderRequest{.frame = frame});
}

World renderFrame(Session& session, const FrameShape& shape, const RenderRequest& request) {
  World input = patternedInput(shape);
  return renderOver(input, session, shape, request);
}

World renderOver(World& input, Session& session, const FrameShape& shape,
                 const RenderRequest& request) {
  const std::vector<std::uint8_t> before(input.bytes().begin(), input.bytes().end());
  World output(shape.width, shape.height, shape.depth, shape.output);
  output.fill(0xFF);
  session.render(input, output, request);
  EXPECT_TRUE(output.guardsIntact()) << "a byte outside the output was written";
  EXPECT_TRUE(input.guardsIntact() && std::ranges::equal(before, input.bytes()))
      << "the input was written";
  EXPECT_TRUE(withinFullScale(output));
  return output;
}

void expectHarmlessRender(Session& session, World& output) {
  EXPECT_EQ(session.call(PF_Cmd_RENDER), PF_Err_NONE);
  EXPECT_TRUE(output.guardsIntact());
}

bool isBlank(const World& world) {
  for (A_long y = 0; y < world.height(); ++y) {
    const auto row = world.rowPixelBytes(y);
    if (std::ranges::any_of(row, [](std::uint8_t byte) { return byte != 0; })) return false;
  }
  return true;
}

std::vector<PF_Point> litPixels(const World& world) {
  std::vector<PF_Point> lit;
  for (A_long y = 0; y < world.height(); ++y) {
    for (A_long x = 0; x < world.width(); ++x) {
      const auto at = static_cast<std::size_t>(x);
      const int alpha =
          world.depth() == Depth::Bits16 ? world.row16(y)[at].alpha : world.row8(y)[at].alpha;
      if (alpha != 0) lit.push_back({x, y});
    }
  }
  return lit;
}

std::string depthName(const ::testing::TestParamInfo<Depth>& depth) {
  return "Depth" + std::to_string(static_cast<int>(depth.param));
}

void EffectTest::TearDown() {
  session.close();
  const hostkit::HostRecords& records = session.records();
  EXPECT_EQ(records.handles.liveHandles(), 0);
  EXPECT_TRUE(records.handles.balanced());
  EXPECT_TRUE(records.suites.balanced());
  EXPECT_TRUE(records.masks.balanced());
  EXPECT_TRUE(records.pane.balanced());
  EXPECT_EQ(records.wrongEffectRefs, 0);
}

InstanceRecord instanceRecord(Session& session) {
  const PF_Handle handle = session.inData().sequence_data;
  InstanceRecord record;
  std::memcpy(&record, *handle, sizeof record);
  return record;
}

}  // namespace tests
