// What the tests of the built module share: the built module, a session that must end clean, and
// frames rendered between guard bytes.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "hostkit/module.h"
#include "hostkit/session.h"
#include "hostkit/world.h"

namespace tests {

// Loaded once; some of the module's state is its own, not an instance's.
const hostkit::Module& theModule();

struct FrameShape {
  A_long width = 64;
  A_long height = 48;
  hostkit::Depth depth = hostkit::Depth::Bits8;
  hostkit::WorldLayout input{};
  hostkit::WorldLayout output{};
};

// Global, parameter and sequence set-up, and default values for a layer of that size.
void openWithDefaults(hostkit::Session& session, const FrameShape& shape = {});

PF_ParamIndex indexOf(const hostkit::Session& session, std::string_view label);
// A number, an angle, a popup item or a checkbox, whatever the parameter takes.
void set(hostkit::Session& session, std::string_view label, double value);

// Stars that are single white pixels, stand still and stay, `count` of them born in every frame.
void emitDots(hostkit::Session& session, int count);

// Every pixel of its own color and alpha, some of them transparent, none above full scale.
hostkit::World patternedInput(const FrameShape& shape);

// One frame as a host renders it, over a patterned input and into an output full of old bytes.
// Fails the test when a guard byte or anything of the input changed, or a channel left its scale.
hostkit::World renderFrame(hostkit::Session& session, const FrameShape& shape, A_long frame);
hostkit::World renderFrame(hostkit::Session& session, const FrameShape& shape,
                           const hostkit::RenderRequest& request);

// The same over an input of the test's own, which may have another size.
hostkit::World renderOver(hostkit::World& input, hostkit::Session& session, const FrameShape& shape,
                          const hostkit::RenderRequest& request = {});

// Fails the test unless the single render command answers no error and keeps within the output.
void expectHarmlessRender(hostkit::Session& session, hostkit::World& output);

bool isBlank(const hostkit::World& world);                     // every pixel zero
std::vector<PF_Point> litPixels(const hostkit::World& world);  // those with some alpha

// A session that is closed after the test with nothing left behind.
class EffectTest : public ::testing::Test {
 protected:
  void TearDown() override;

  hostkit::Session session{theModule()};
};

// The same, run at both depths.
class DepthTest : public EffectTest, public ::testing::WithParamInterface<hostkit::Depth> {};

std::string depthName(const ::testing::TestParamInfo<hostkit::Depth>& depth);

// The instance's record inside the sequence handle, as far as the host contract fixes it.
struct InstanceRecord {
  void* stars;
  std::int32_t capacity;
  std::int32_t starCount;
  std::int32_t stepCounter;
  std::uint32_t seal;  // by which the module knows the record again
  float emissionAccumulator;
  std::int32_t presetListCount;
  void* presetLists;

  bool operator==(const InstanceRecord&) const = default;
};
static_assert(sizeof(InstanceRecord) == 40);

InstanceRecord instanceRecord(hostkit::Session& session);

}  // namespace tests
