// What programs ask of an instance through the host: threads, states of its own, backdrops.
#include <gtest/gtest.h>

#include <cstring>
#include <thread>

#include "plugin/message/program_message.h"
#include "tests/plugin/hosted_effect.h"

namespace {

using brisel::MessageAnswer;
using brisel::MessageRequest;
using brisel::ProgramMessage;
using hostkit::Depth;
using hostkit::Session;
using hostkit::World;
using tests::FrameShape;
using tests::renderFrame;

hostkit::OutputShape outputOf(const FrameShape& shape) {
  return {shape.width, shape.height, shape.depth};
}

// Stars that take many random numbers, and read the input by color, too.
void setLivelyStars(Session& session, int path) {
  for (const auto& [label, value] : {std::pair("Standard path", path),
                                     {"Color schema", 2},
                                     {"Intensity", 30},
                                     {"Type", 12},
                                     {"Terminate type", 4},
                                     {"Time life", 5},
                                     {"Type of halo", 2},
                                     {"Type of blink", 2},
                                     {"Angle jittering", 50},
                                     {"Mix with original", 2}}) {
    tests::set(session, label, value);
  }
}

class MessagesTest : public tests::DepthTest {
 protected:
  void SetUp() override { tests::openWithDefaults(session, shape); }

  FrameShape shape{.depth = GetParam()};
};
INSTANTIATE_TEST_SUITE_P(, MessagesTest, ::testing::Values(Depth::Bits8, Depth::Bits16),
                         tests::depthName);

TEST_P(MessagesTest, StarsAreMixedWithTheBackdropOfOneFrame) {
  World backdrop(shape.width, shape.height, shape.depth);
  backdrop.fill(0x55);
  setLivelyStars(session, 2);
  tests::set(session, "Color schema", 1);  // stars that do not read the input
  const World overInput = renderFrame(session, shape, 0);
  const World overBackdrop = tests::renderOver(backdrop, session, shape);
  EXPECT_FALSE(samePixels(overInput, overBackdrop));

  session.setBackdrop(&backdrop);
  EXPECT_TRUE(samePixels(renderFrame(session, shape, 0), overBackdrop));
  EXPECT_TRUE(samePixels(renderFrame(session, shape, 0), overInput)) << "again";
  session.setBackdrop(&backdrop);
  session.setBackdrop(nullptr);
  EXPECT_TRUE(samePixels(renderFrame(session, shape, 0), overInput)) << "taken back";

  setLivelyStars(session, 6);
  renderFrame(session, shape, 0);
  const std::vector<std::uint8_t> fromInput = session.saveState();
  session.setBackdrop(&backdrop);
  renderFrame(session, shape, 0);
  EXPECT_EQ(session.saveState(), fromInput) << "born on the input";

  backdrop.record().rowbytes = 1;
  EXPECT_THROW(session.setBackdrop(&backdrop), hostkit::Error);
}

// The frames of a session by itself, with a state of its own.
std::vector<World> frames(Session& session, const FrameShape& shape) {
  std::vector<World> all;
  for (A_long frame = 0; frame < 12; ++frame) {
    if (frame % 4 == 2) {
      World input = tests::patternedInput(shape);
      session.advance(input, outputOf(shape), {.frame = frame});
    } else {
      all.push_back(renderFrame(session, shape, frame));
    }
  }
  return all;
}

TEST_P(MessagesTest, SessionsWithStatesOfTheirOwnRenderAtOnce) {
  Session other(tests::theModule());
  tests::openWithDefaults(other, shape);
  setLivelyStars(session, 2);
  setLivelyStars(other, 7);
  const std::vector<World> expected = frames(session, shape);
  const std::vector<World> expectedOther = frames(other, shape);
  session.useOwnState();
  other.useOwnState();
  other.usePainting(2);
  std::vector<World> rendered, renderedOther;
  std::thread thread([&] { renderedOther = frames(other, shape); });
  rendered = frames(session, shape);
  thread.join();
  EXPECT_TRUE(std::ranges::equal(rendered, expected, hostkit::samePixels));
  EXPECT_TRUE(std::ranges::equal(renderedOther, expectedOther, hostkit::samePixels));
}

// Not meant to be, and harmless: whichever comes second draws by itself.
TEST_P(MessagesTest, SessionsThatShareTheirStateRenderAtOnceWithoutHarm) {
  Session other(tests::theModule());
  tests::openWithDefaults(other, shape);
  setLivelyStars(session, 2);
  setLivelyStars(other, 7);
  std::vector<World> rendered, renderedOther;
  std::thread thread([&] { renderedOther = frames(other, shape); });
  rendered = frames(session, shape);
  thread.join();
  for (const auto& all : {std::cref(rendered), std::cref(renderedOther)}) {
    EXPECT_FALSE(tests::isBlank(all.get().back()));
  }
  EXPECT_EQ(tests::instanceRecord(session).stepCounter, 12);
  EXPECT_EQ(tests::instanceRecord(other).stepCounter, 12);
}

TEST_P(MessagesTest, WhatCannotBeDoneIsRefused) {
  renderFrame(session, shape, 0);
  const auto before = tests::instanceRecord(session);
  const std::vector<std::uint8_t> saved = session.saveState();
  for (const int threads : {-1, 0, 257}) EXPECT_THROW(session.usePainting(threads), hostkit::Error);
  for (const char* name : {"mmx", "avx512 and more", "avx51"}) {
    EXPECT_THROW(session.usePainting(1, name), hostkit::Error);
  }
  World input = tests::patternedInput(shape);
  EXPECT_THROW(session.advance(input, {0, 48, shape.depth}, {}), hostkit::Error);
  EXPECT_THROW(session.advance(input, {64, -1, shape.depth}, {}), hostkit::Error);
  EXPECT_THROW(session.restoreState({}), hostkit::Error);
  EXPECT_EQ(session.saveState(), saved);
  EXPECT_EQ(tests::instanceRecord(session), before);

  session.flatten();
  EXPECT_THROW(session.useOwnState(), hostkit::Error) << "no instance";
  session.resetup();
  session.useOwnState();
}

TEST_P(MessagesTest, RecordsThatAreNotKnownAreLeftAlone) {
  renderFrame(session, shape, 0);
  const auto expectIgnored = [&](std::uint32_t size, std::uint32_t magic, std::uint32_t version,
                                 int request, std::size_t bytes) {
    ProgramMessage message;
    message.size = size;
    message.magic = magic;
    message.version = version;
    message.request = static_cast<MessageRequest>(request);
    // No byte behind those that are there may be read, as sanitizers see.
    const auto record = std::make_unique<std::uint64_t[]>((bytes + 7) / 8);
    std::memcpy(record.get(), &message, bytes);
    EXPECT_EQ(session.call(PF_Cmd_COMPLETELY_GENERAL, record.get()), PF_Err_NONE);
    EXPECT_EQ(std::memcmp(record.get(), &message, bytes), 0);
  };
  const ProgramMessage ours;
  for (const std::uint32_t size : {0u, 8u, 40u, 47u, 49u, 4096u}) {
    expectIgnored(size, ours.magic, ours.version, 5, std::clamp<std::size_t>(size, 8, 48));
  }
  expectIgnored(ours.size, ours.magic ^ 1, ours.version, 5, 8);
  expectIgnored(ours.size, ours.magic, ours.version + 1, 5, sizeof ours);
  for (const int request : {0, -1, 7}) {
    expectIgnored(ours.size, ours.magic, ours.version, request, sizeof ours);
  }
  EXPECT_EQ(session.call(PF_Cmd_COMPLETELY_GENERAL), PF_Err_NONE) << "no record";
  EXPECT_EQ(session.outData().out_flags, 0);
}

}  // namespace
