// Graying: what the module tells the host of parameters without effect, as a digest over every
// combination of the values that decide it.
#include <gtest/gtest.h>

#include <cstring>
#include <map>
#include <vector>

#include "tests/plugin/hosted_effect.h"

namespace {

constexpr std::int32_t kBit = 1 << 5;  // disabled in ui_flags, collapsed in flags
constexpr PF_Fixed kWhole = 100 << 16;
const hostkit::SuiteName kSuite{kPFParamUtilsSuite, kPFParamUtilsSuiteVersion2};

std::map<PF_ParamIndex, PF_ParamDef> sent;  // the last of every index
hostkit::SuiteLedger* ledger;

PF_Err recordUpdate(PF_ProgPtr effectRef, PF_ParamIndex index, const PF_ParamDef* def) {
  hostkit::currentHost(effectRef);
  ledger->noteCall(kSuite);
  sent[index] = *def;
  return PF_Err_NONE;
}

const PF_ParamUtilsSuite2 kRecorder{recordUpdate, {}};

bool same(const PF_ParamDef& a, const PF_ParamDef& b) {
  return std::memcmp(&a, &b, sizeof a) == 0;
}

class GrayingTest : public tests::EffectTest {
 protected:
  void SetUp() override {
    tests::openWithDefaults(session);
    ledger = &session.records().suites;
    ledger->offer(kSuite, &kRecorder);
  }

  PF_ParamDef& value(PF_ParamIndex index) { return session.parameters().value(index); }

  PF_Err change(PF_ParamIndex index) {
    PF_UserChangedParamExtra extra{index};
    return session.call(PF_Cmd_USER_CHANGED_PARAM, &extra);
  }

  // Calls `body` for every combination of the items of these popups.
  template <typename Body>
  void forEachItem(std::vector<PF_ParamIndex> popups, const Body& body) {
    if (popups.empty()) return body();
    const PF_ParamIndex popup = popups.back();
    SCOPED_TRACE(popup);
    popups.pop_back();
    const auto& parameter = session.parameters().list()[static_cast<std::size_t>(popup)];
    for (std::size_t item = 1; item <= parameter.items.size(); ++item) {
      SCOPED_TRACE(parameter.items[item - 1]);
      session.parameters().setItem(popup, static_cast<int>(item));
      forEachItem(popups, body);
    }
  }

  // Both commands under the current values, with both bits cleared and with both set: parameters
  // differ by the two bits alone, and the host's own records stay as they are.
  void addWhatIsSent() {
    for (const std::int32_t bit : {0, kBit}) {
      std::vector<PF_ParamDef> params;
      for (PF_ParamIndex i = 0; i < 82; ++i) {
        value(i).ui_flags = (value(i).ui_flags & ~kBit) | bit;
        value(i).flags = (value(i).flags & ~kBit) | bit;
        params.push_back(value(i));
      }
      for (PF_ParamIndex key = -1; key < 82; ++key) {  // -1: of all
        sent.clear();
        ASSERT_EQ(key < 0 ? session.call(PF_Cmd_UPDATE_PARAMS_UI) : change(key), PF_Err_NONE);
        for (auto& [index, def] : sent) {
          add(index, (def.ui_flags & kBit) != 0, (def.flags & kBit) != 0);
          const PF_ParamDef& before = params[static_cast<std::size_t>(index)];
          def.ui_flags = before.ui_flags;
          def.flags = before.flags;
          EXPECT_TRUE(same(def, before)) << index << " was sent with more than its bits changed";
        }
        add(-1, false, false);
        for (PF_ParamIndex i = 0; i < 82; ++i) {
          ASSERT_TRUE(same(value(i), params[static_cast<std::size_t>(i)])) << i << " was written";
        }
      }
    }
  }

  // FNV-1a of what was sent, a parameter at a time.
  void add(PF_ParamIndex index, bool disabled, bool collapsed) {
    const auto number = static_cast<std::uint32_t>(index * 4 + disabled * 2 + collapsed);
    digest = (digest ^ number) * 1099511628211u;
  }
  std::uint64_t digest = 14695981039346656037u;
};

TEST_F(GrayingTest, FollowsEveryCombinationOfTheControllingValues) {
  for (const PF_PathID mask : {0u, 7u}) {
    for (const PF_Fixed completeness : {kWhole, kWhole - 1, -kWhole}) {
      SCOPED_TRACE(::testing::Message() << "mask " << mask << ", completeness " << completeness);
      value(4).u.path_d.path_id = mask;
      value(15).u.fd.value = completeness;
      forEachItem({5, 12}, [&] { addWhatIsSent(); });
    }
  }
  for (const auto& popups : {std::vector<PF_ParamIndex>{23, 28}, {34}, {40, 52}, {57, 60}, {71}}) {
    forEachItem(popups, [&] { addWhatIsSent(); });
  }
  EXPECT_EQ(digest, 2007431736082826495u);
}

TEST_F(GrayingTest, ARuleWithoutTheSuiteIsPassedOver) {
  sent.clear();
  ledger->refuseAcquisition(1);
  EXPECT_EQ(session.call(PF_Cmd_UPDATE_PARAMS_UI), PF_Err_NONE);
  EXPECT_FALSE(sent.contains(5));
  EXPECT_TRUE(sent.contains(6) && sent.contains(78));

  sent.clear();
  ledger->withdraw(kSuite);
  EXPECT_EQ(session.call(PF_Cmd_UPDATE_PARAMS_UI), PF_Err_NONE);
  EXPECT_EQ(change(40), PF_Err_NONE);
  ledger->offer(kSuite, &kRecorder);
  for (const PF_ParamIndex none : {-1, 82, 0x7FFFFFFF}) EXPECT_EQ(change(none), PF_Err_NONE);
  EXPECT_EQ(session.call(PF_Cmd_USER_CHANGED_PARAM), PF_Err_NONE) << "without an index";
  EXPECT_TRUE(sent.empty());
}

}  // namespace
