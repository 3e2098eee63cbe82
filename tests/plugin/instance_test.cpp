// An instance of the effect renders what the built module renders: every preset that ships, over an
// input, at both depths, and the emitters that read the input.
#include "effect/instance.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "effect/presets.h"
#include "tests/plugin/hosted_effect.h"

namespace {

using brisel::ParamKind;
using brisel::Values;
using hostkit::World;
using tests::FrameShape;

void setRecord(PF_ParamDefUnion& u, ParamKind kind, brisel::Value value) {
  const brisel::ByteColor c = brisel::toColor(value);
  switch (kind) {
    case ParamKind::Number:
      u.fd.value = value.number;
      break;
    case ParamKind::WholeNumber:
      u.sd.value = value.number;
      break;
    case ParamKind::Angle:
      u.ad.value = value.number;
      break;
    case ParamKind::Checkbox:
      u.bd.value = value.number;
      break;
    case ParamKind::Popup:
      u.pd.value = value.number;
      break;
    case ParamKind::Color:
      u.cd.value = {c.alpha, c.red, c.green, c.blue};
      break;
    case ParamKind::Point:
      u.td.x_value = value.number;
      u.td.y_value = value.y;
      break;
    default:
      break;
  }
}

brisel::MutableImageView viewOf(World& world) {
  return {world.bytes().data(), world.width(), world.height(), world.rowBytes(),
          world.depth() == hostkit::Depth::k16 ? brisel::PixelFormat::Argb16
                                               : brisel::PixelFormat::Argb8};
}

class InstanceTest : public tests::DepthTest {
 protected:
  void expectSameFrames(const Values& values) {
    for (PF_ParamIndex i = 1; i < brisel::kParamCount; ++i) {
      setRecord(session.parameters().value(i).u, brisel::parameterSpec(i).kind, values[i]);
    }
    brisel::Instance instance;
    World input = tests::patternedInput(shape);
    World output(shape.width, shape.height, shape.depth);
    for (A_long frame = 0; frame < 14; ++frame) {
      const World expected = tests::renderFrame(session, shape, frame);
      ASSERT_TRUE(instance.render(values, frame, {viewOf(output), viewOf(input)}));
      ASSERT_TRUE(samePixels(output, expected)) << "frame " << frame;
    }
  }

  FrameShape shape{.depth = GetParam()};
};
INSTANTIATE_TEST_SUITE_P(, InstanceTest, ::testing::Values(hostkit::Depth::k8, hostkit::Depth::k16),
                         tests::depthName);

TEST_P(InstanceTest, RendersWhatTheModuleRenders) {
  tests::openWithDefaults(session, shape);
  const brisel::FrameSize size{shape.width, shape.height};
  expectSameFrames(Values(size));
  for (const int path : {6, 7, 8}) {
    Values values(size);
    values.setNumber(brisel::kStandardPath, path);
    values.setNumber(brisel::kColorSchema, 2);
    values.setNumber(brisel::kMixWithOriginal, 2);
    expectSameFrames(values);
  }
  int presets = 0;
  for (const auto& file : std::filesystem::directory_iterator(BRISEL_LIBRARY_PATH)) {
    if (file.path().extension() != ".txt") continue;
    SCOPED_TRACE(file.path().filename());
    Values values(size);
    ASSERT_EQ(brisel::applyParameterFile(file.path().string().c_str(), size, values),
              brisel::ParameterFile::State::Read);
    expectSameFrames(values);
    ++presets;
  }
  EXPECT_GT(presets, 20);
}

}  // namespace
