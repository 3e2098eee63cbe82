// Greying: what the module tells the host of parameters without effect, for every combination of
// the values that decide it.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <map>
#include <vector>

#include "hosted_effect.h"

namespace {

constexpr std::int32_t kBit = 1 << 5;  // disabled in ui_flags, collapsed in flags
constexpr PF_Fixed kWhole = 100 << 16;
const hostkit::SuiteName kSuite{kPFParamUtilsSuite, kPFParamUtilsSuiteVersion2};

enum Sends { Both, UiOnly, UiOnlyWhenEnabled };
struct Row {
  PF_ParamIndex index;
  bool enabled;
  Sends sends = Both;
};
struct Rule {
  std::vector<PF_ParamIndex> keys;
  std::vector<Row> rows;
};

std::vector<Rule> rulesUnder(const std::vector<PF_ParamDef>& params) {
  const auto item = [&](std::size_t index) { return params[index].u.pd.value; };
  const bool mask = params[4].u.path_d.path_id != 0;
  const A_long path = item(5), orientation = item(12), terminate = item(23), type = item(40);
  const bool points = !mask && path < 6;
  const bool directed = (orientation == 1 || orientation == 8 || path == 1) && orientation != 9;
  const bool line = mask || (path != 1 && path != 6 && path != 7);
  const bool ends = terminate > 1, bursts = terminate > 3;
  const bool rayed = type < 6 || type > 10, turned = type < 8 || type > 10;
  const bool halo = item(57) > 1, blink = item(60) > 1;
  return {{{5}, {{5, !mask}}},
          {{7, 8, 9, 10},
           {{6, points, UiOnlyWhenEnabled},
            {7, points},
            {8, points && (path == 2 || path == 4)},
            {9, points && (path == 2 || path == 4 || path == 5)},
            {10, points && (path == 2 || path == 3 || path == 4)}}},
          {{13}, {{13, directed}, {14, directed}}},
          {{15, 16}, {{15, line}, {16, line && params[15].u.fd.value != kWhole, UiOnly}}},
          {{22, 26, 28, 29},
           {{22, ends, UiOnlyWhenEnabled},
            {24, ends},
            {25, ends},
            {26, terminate > 2},
            {27, bursts},
            {28, bursts},
            {29, bursts && item(28) == 2}}},
          {{35, 36}, {{35, item(34) > 1}, {36, item(34) > 1}}},
          {{40}, {{47, rayed}, {48, rayed}, {49, rayed}, {50, turned}, {51, turned}, {55, turned}}},
          {{53, 54}, {{52, turned}, {53, turned && item(52) > 1}, {54, turned && item(52) > 1}}},
          {{56, 58, 59, 61, 62, 63, 64, 65},
           {{56, halo || blink, UiOnlyWhenEnabled},
            {58, halo},
            {59, halo},
            {61, blink},
            {62, blink},
            {63, halo || blink},
            {64, halo || blink},
            {65, halo || blink}}},
          {{72, 78}, {{72, item(71) == 2}, {78, item(71) == 1}}}};
}

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

class GreyingTest : public hosttest::EffectTest {
 protected:
  void SetUp() override {
    hosttest::openWithDefaults(session);
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

  // Both commands under the current values, with both bits cleared and with both set.
  void expectRules() {
    for (const std::int32_t bit : {0, kBit}) {
      std::vector<PF_ParamDef> params;
      for (PF_ParamIndex i = 0; i < 82; ++i) {
        value(i).ui_flags = (value(i).ui_flags & ~kBit) | bit;
        value(i).flags = (value(i).flags & ~kBit) | bit;
        params.push_back(value(i));
      }
      for (PF_ParamIndex key = -1; key < 82; ++key) expectSent(key, params);
    }
  }

 private:
  void expectSent(PF_ParamIndex key, const std::vector<PF_ParamDef>& params) {  // -1: of all
    SCOPED_TRACE(::testing::Message() << "key " << key);
    sent.clear();
    ASSERT_EQ(key < 0 ? session.call(PF_Cmd_UPDATE_PARAMS_UI) : change(key), PF_Err_NONE);
    std::size_t expected = 0;
    for (const auto& [keys, rows] : rulesUnder(params)) {
      if (key >= 0 && std::ranges::find(keys, key) == keys.end()) continue;
      for (const auto& [index, enabled, sends] : rows) {
        ++expected;
        ASSERT_TRUE(sent.contains(index)) << index;
        PF_ParamDef def = params[static_cast<std::size_t>(index)];
        def.ui_flags = (def.ui_flags & ~kBit) | (enabled ? 0 : kBit);
        if (sends == Both || (sends == UiOnlyWhenEnabled && !enabled)) {
          def.flags = (def.flags & ~kBit) | (enabled ? 0 : kBit);
        }
        EXPECT_TRUE(same(sent[index], def))
            << index << " was sent with ui_flags " << sent[index].ui_flags << ", flags "
            << sent[index].flags;
      }
    }
    EXPECT_EQ(sent.size(), expected);
    for (PF_ParamIndex i = 0; i < 82; ++i) {
      ASSERT_TRUE(same(value(i), params[static_cast<std::size_t>(i)])) << i << " was written";
    }
  }
};

TEST_F(GreyingTest, FollowsEveryCombinationOfTheControllingValues) {
  for (const PF_PathID mask : {0u, 7u}) {
    for (const PF_Fixed completeness : {kWhole, kWhole - 1, -kWhole}) {
      SCOPED_TRACE(::testing::Message() << "mask " << mask << ", completeness " << completeness);
      value(4).u.path_d.path_id = mask;
      value(15).u.fd.value = completeness;
      forEachItem({5, 12}, [&] { expectRules(); });
    }
  }
  for (const auto& popups : {std::vector<PF_ParamIndex>{23, 28}, {34}, {40, 52}, {57, 60}, {71}}) {
    forEachItem(popups, [&] { expectRules(); });
  }
}

TEST_F(GreyingTest, ARuleWithoutTheSuiteIsPassedOver) {
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
