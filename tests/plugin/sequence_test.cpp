#include <gtest/gtest.h>

#include <cstring>

#include "tests/plugin/hosted_effect.h"

namespace {

using tests::EffectTest;
using tests::instanceRecord;
using tests::InstanceRecord;
using tests::renderFrame;

constexpr PF_Err kNoSequenceHandle = -108;

class SequenceTest : public EffectTest {
 protected:
  void SetUp() override {
    ASSERT_EQ(session.call(PF_Cmd_GLOBAL_SETUP), PF_Err_NONE);
    ASSERT_EQ(session.call(PF_Cmd_PARAMS_SETUP), PF_Err_NONE);
    session.parameters().resetToDefaults(64, 48);
  }

  void expectFreshInstance() {
    ASSERT_NE(session.inData().sequence_data, nullptr);
    EXPECT_EQ(handles().size(session.inData().sequence_data), 40u);
    EXPECT_EQ(session.outData().flat_sdata_size, 40);
    EXPECT_EQ(handles().liveHandles(), 1);
    EXPECT_EQ(handles().outstandingLocks(), 0);
    InstanceRecord record = instanceRecord(session);
    record.seal = 0;
    record.presetListCount = 0;
    record.presetLists = nullptr;
    EXPECT_EQ(record, InstanceRecord{});
  }

  void expectNoInstance() {
    EXPECT_EQ(session.inData().sequence_data, nullptr);
    EXPECT_EQ(handles().liveHandles(), 0);
  }

  hostkit::HandleTable& handles() { return session.records().handles; }
};

TEST_F(SequenceTest, SetupMakesAnEmptyInstanceAndSetdownTakesItBack) {
  ASSERT_EQ(session.call(PF_Cmd_SEQUENCE_SETUP), PF_Err_NONE);
  expectFreshInstance();
  ASSERT_EQ(session.call(PF_Cmd_SEQUENCE_SETDOWN), PF_Err_NONE);
  expectNoInstance();
  ASSERT_EQ(session.call(PF_Cmd_SEQUENCE_SETDOWN), PF_Err_NONE) << "nothing to take back";
}

TEST_F(SequenceTest, ResetupMakesAnInstanceOnlyWhereThereIsNone) {
  ASSERT_EQ(session.call(PF_Cmd_SEQUENCE_RESETUP), PF_Err_NONE);
  expectFreshInstance();

  renderFrame(session, {}, 0);
  const PF_Handle handle = session.inData().sequence_data;
  const InstanceRecord before = instanceRecord(session);
  ASSERT_EQ(session.call(PF_Cmd_SEQUENCE_RESETUP), PF_Err_NONE);
  EXPECT_EQ(session.inData().sequence_data, handle);
  EXPECT_EQ(instanceRecord(session), before);
}

TEST_F(SequenceTest, FlatteningReleasesTheInstanceAndItsStars) {
  ASSERT_EQ(session.call(PF_Cmd_SEQUENCE_SETUP), PF_Err_NONE);
  const auto first = renderFrame(session, {}, 0);
  renderFrame(session, {}, 1);
  session.flatten();
  expectNoInstance();
  session.flatten();
  session.resetup();
  expectFreshInstance();
  EXPECT_TRUE(samePixels(renderFrame(session, {}, 0), first));
}

TEST_F(SequenceTest, RefusedHandlesAndLocksAreReportedAndLeakNothing) {
  for (const PF_Cmd cmd : {PF_Cmd_SEQUENCE_SETUP, PF_Cmd_SEQUENCE_RESETUP}) {
    handles().refuseAllocation(1);
    EXPECT_EQ(session.call(cmd), kNoSequenceHandle);
    expectNoInstance();
  }
  handles().refuseLocks(true);
  session.call(PF_Cmd_SEQUENCE_SETUP);
  session.call(PF_Cmd_SEQUENCE_SETDOWN);
  handles().refuseLocks(false);
  EXPECT_TRUE(handles().balanced());
  session.call(PF_Cmd_SEQUENCE_SETDOWN);
  expectNoInstance();
}

TEST_F(SequenceTest, DataThatTheModuleDidNotLeaveThereIsNotFollowed) {
  ASSERT_EQ(session.call(PF_Cmd_SEQUENCE_SETUP), PF_Err_NONE);
  for (A_long frame = 0; frame < 3; ++frame) renderFrame(session, {}, frame);
  const PF_Handle own = session.inData().sequence_data;
  const InstanceRecord before = instanceRecord(session);
  const auto rendersNoStar = [&] { return tests::isBlank(renderFrame(session, {}, 3)); };
  for (std::size_t i = 0; i < sizeof before; ++i) {
    const auto byte = [&]() -> char& { return static_cast<char*>(*own)[i]; };  // it moves
    byte() ^= 4;
    EXPECT_TRUE(rendersNoStar()) << "byte " << i;
    byte() ^= 4;
  }
  for (const std::size_t size : {sizeof before, sizeof before - 1}) {
    const PF_Handle copy =
        handles().allocate(size);  // of a host that copies what it should flatten
    std::memcpy(*copy, *own, size);
    session.inData().sequence_data = copy;
    EXPECT_TRUE(rendersNoStar());
    EXPECT_EQ(session.call(PF_Cmd_SEQUENCE_SETDOWN), PF_Err_NONE);
    EXPECT_EQ(handles().liveHandles(), 1);
  }
  session.inData().sequence_data = own;
  EXPECT_FALSE(rendersNoStar());
  EXPECT_EQ(instanceRecord(session).stepCounter, before.stepCounter + 1);
  EXPECT_EQ(session.call(PF_Cmd_SEQUENCE_SETDOWN), PF_Err_NONE);
}

}  // namespace
