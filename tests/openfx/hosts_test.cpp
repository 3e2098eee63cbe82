// The built plug-in in hosts that do not keep to the interface, and what it answers to actions.
#include <gtest/gtest.h>

#include <atomic>
#include <limits>
#include <thread>
#if defined(__GLIBC__)
#include <malloc.h>
#endif

#include "hostkit/error.h"
#include "tests/openfx/frames.h"

namespace {

using namespace tests;
using brisel::Values;
using hostkit::OpenFxEffect;
using hostkit::OpenFxHost;
using hostkit::OpenFxPicture;

constexpr double kNone = std::numeric_limits<double>::quiet_NaN();

OfxStatus renderPattern(OpenFxEffect& effect, double time, OpenFxPicture& output) {
  return renderFrame(effect, time, pattern({}), output);
}

TEST(OpenFxHosts, MayFailAnyCall) {
  const std::vector<std::uint8_t> expected = freshFrame(3);
  int refused = 0, drawn = 0;
  for (const int every : {2, 3, 5, 7, 11, 17, 29, 53, 101, 211, 401, 443, 631, 997}) {
    OpenFxHost host;  // whose failures make others, such as gaps in lists
    host.manners.failsEvery = every;
    try {
      OpenFxEffect effect(host, thePlugin(), kOfxContextFilter);
      makeBusy(effect);
      for (const int frame : {3, 1, 2}) {
        OpenFxPicture output({}, kFrame);
        const OfxStatus status = renderPattern(effect, frame, output);
        EXPECT_TRUE(status == kOfxStatOK || status == kOfxStatFailed) << status;
        effect.change("size");
        effect.change("emmiterPresets");
      }
      host.manners.failsEvery = 0;
      OpenFxPicture output({}, kFrame);
      EXPECT_EQ(renderPattern(effect, 3, output), kOfxStatOK);
      ++drawn;
    } catch (const hostkit::Error&) {
      ++refused;
    }
    for (const std::string& fault : host.complaints()) {
      EXPECT_EQ(fault.find("written"), std::string::npos) << fault;
      EXPECT_EQ(fault.find("given back"), std::string::npos) << fault;
      EXPECT_EQ(fault.find("replies"), std::string::npos) << fault;
    }
  }
  EXPECT_GT(refused, 2);
  EXPECT_GT(drawn, 2);
  EXPECT_EQ(freshFrame(3), expected);

  // Each call of a frame in turn.
  StrictHost host;
  OpenFxEffect effect(host, thePlugin(), kOfxContextFilter);
  makeBusy(effect);
  OpenFxPicture output({}, kFrame);
  const int before = host.calls();
  ASSERT_EQ(renderPattern(effect, 3, output), kOfxStatOK);
  const int calls = host.calls() - before;
  for (int call = 1; call <= calls; call += 3) {
    host.failOnlyCall(call);
    OpenFxPicture other({}, kFrame);
    const OfxStatus status = renderPattern(effect, 3, other);
    EXPECT_TRUE(status == kOfxStatOK || status == kOfxStatFailed) << call;
  }
  host.failOnlyCall(0);
  ASSERT_EQ(renderPattern(effect, 3, output), kOfxStatOK);
  EXPECT_EQ(output.bytes(), expected);
}

TEST(OpenFxHosts, MayFailAnyCallBeforeTheFirstFrame) {
  StrictHost sound;
  const OpenFxEffect whole(sound, thePlugin(), kOfxContextFilter);
  EXPECT_GT(sound.calls(), 500);
  int refused = 0;
  for (int call = 1; call <= sound.calls(); call += 7) {
    OpenFxHost host;  // whose failures make others, such as gaps in lists
    host.failOnlyCall(call);
    try {
      OpenFxEffect effect(host, thePlugin(), kOfxContextFilter);
      OpenFxPicture output({}, kFrame);
      EXPECT_EQ(renderPattern(effect, 1, output), kOfxStatOK) << call;
    } catch (const hostkit::Error&) {
      ++refused;
    }
  }
  EXPECT_LE(refused, 4) << "nothing but clips is needed";
}

TEST(OpenFxHosts, MayLackParameters) {
  StrictHost host;
  OpenFxPicture expected({}, kFrame), output({}, kFrame);
  OpenFxEffect whole(host, thePlugin(), kOfxContextFilter);
  ASSERT_EQ(renderPattern(whole, 9, expected), kOfxStatOK);
  for (const char* name : {"controlPoints", "emmiter", "size", "start", "path", "starsPresets"}) {
    host.manners.refusedParameter = name;
    OpenFxEffect effect(host, thePlugin(), kOfxContextFilter);
    effect.set("emmiterPresets", {5});
    effect.change("emmiterPresets");
    EXPECT_EQ(effect.parameter("standardPath").numbers, std::vector{4.0}) << name;
    OpenFxEffect fresh(host, thePlugin(), kOfxContextFilter);
    ASSERT_EQ(renderPattern(fresh, 9, output), kOfxStatOK);
    EXPECT_EQ(output.bytes(), expected.bytes()) << name;
  }
  host.manners.refusedParameter.clear();
}

TEST(OpenFxHosts, MayAnswerNoValues) {
  StrictHost host;
  OpenFxEffect effect(host, thePlugin(), kOfxContextFilter);
  makeBusy(effect);
  host.manners.failsValues = true;
  const OpenFxPicture source = pattern({});
  OpenFxPicture output({}, kFrame);
  ASSERT_EQ(renderPattern(effect, 9, output), kOfxStatOK);
  const auto defaults = [](int) {
    Values values({kFrame.x2, kFrame.y2});
    values.setNumber(brisel::kMixWithOriginal, 3);
    return values;
  };
  expectFrame(output, effectFrame(defaults, 9, &source, false), 0);
  // And values that are none, or beyond what is valid.
  host.manners.failsValues = false;
  OpenFxEffect wild(host, thePlugin(), kOfxContextFilter);
  wild.set("size", {kNone});
  wild.set("start", {kNone, kNone});
  wild.set("colorOfParticles", {kNone, 0, 0});
  wild.set("type", {77});
  wild.set("standardPath", {-1});
  ASSERT_EQ(renderPattern(wild, 9, output), kOfxStatOK);
  expectFrame(output, effectFrame(defaults, 9, &source, false), 0);
  wild.set("gravity", {std::numeric_limits<double>::infinity()});
  wild.set("start", {1e300, -1e300});
  wild.set("maximumNumberOfStars", {2e9});
  EXPECT_EQ(renderPattern(wild, 9, output), kOfxStatOK);
}

TEST(OpenFxHosts, MayKnowTheValuesOfNowOnly) {
  StrictHost host;
  OpenFxEffect effect(host, thePlugin(), kOfxContextFilter);
  makeBusy(effect);
  effect.parameter("intensity").curve = [](double time) { return std::vector{5 + time}; };
  const OpenFxPicture source = pattern({});
  for (const int frame : {3, 12, 5, 4, 13}) {
    host.manners.ignoresTime = frame % 2 != 0;
    host.manners.failsTime = !host.manners.ignoresTime;
    host.manners.now = frame;
    OpenFxPicture output({}, kFrame);
    ASSERT_EQ(renderPattern(effect, frame, output), kOfxStatOK);
    const auto values = [frame](int) {
      Values now = busyValues();
      now.setNumber(brisel::kIntensity, 5 + frame);
      return now;
    };
    expectFrame(output, effectFrame(values, frame, &source, false), 0);
  }
}

TEST(OpenFxHosts, MayMakeOneObjectOfAllAndLoadAndUnloadAsTheyPlease) {
  const std::vector<std::uint8_t> expected = freshFrame(9);
  StrictHost host;
  for (int i = 0; i < 3; ++i) {
    OpenFxEffect effect(host, thePlugin(), kOfxContextFilter, true);
    makeBusy(effect);
    OpenFxPicture output({}, kFrame);
    ASSERT_EQ(renderPattern(effect, 9, output), kOfxStatOK);
    EXPECT_EQ(output.bytes(), expected);
    EXPECT_EQ(thePlugin().mainEntry(kOfxActionUnload, nullptr, nullptr, nullptr), kOfxStatOK);
    EXPECT_EQ(thePlugin().mainEntry(kOfxActionUnload, nullptr, nullptr, nullptr), kOfxStatOK);
  }
}

TEST(OpenFxHosts, MayRenderOnAnyThreads) {
  std::vector<std::vector<std::uint8_t>> expected;
  for (int frame = 0; frame < 24; ++frame) expected.push_back(freshFrame(frame));
  StrictHost host;
  std::vector<std::thread> threads;
  for (int part = 0; part < 4; ++part) {
    threads.emplace_back([&, part] {  // each loads, describes, creates and destroys, too
      OpenFxEffect effect(host, thePlugin(), kOfxContextFilter);
      makeBusy(effect);
      for (int i = 0; i < 24; ++i) {  // forward, backward, with gaps, the same again
        const int frame = part == 0 ? i : part == 1 ? 23 - i : part == 2 ? i * 5 % 24 : i / 3 * 3;
        OpenFxPicture output({}, kFrame);
        EXPECT_EQ(renderPattern(effect, frame, output), kOfxStatOK);
        EXPECT_EQ(output.bytes(), expected[static_cast<std::size_t>(frame)])
            << part << ' ' << frame;
        effect.act(i % 7 == 6 ? kOfxActionPurgeCaches : kOfxActionEndSequenceRender);
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
}

TEST(OpenFxHosts, MayPurgeCachesDuringAFrame) {
  const std::vector<std::uint8_t> expected = freshFrame(150);
  StrictHost host;
  OpenFxEffect effect(host, thePlugin(), kOfxContextFilter);
  makeBusy(effect);
  std::atomic<bool> isOver = false;
  std::thread other([&] {
    while (!isOver) {
      effect.act(kOfxActionPurgeCaches);
      std::this_thread::yield();
    }
  });
  for (const int frame : {150, 20, 150}) {
    OpenFxPicture output({}, kFrame);
    EXPECT_EQ(renderPattern(effect, frame, output), kOfxStatOK);
    EXPECT_TRUE(frame != 150 || output.bytes() == expected);
  }
  isOver = true;
  other.join();
  // From within a call to the host, on the thread that renders.
  effect.parameter("wind").curve = [&](double) {
    effect.act(kOfxActionPurgeCaches);
    return std::vector{0.0};
  };
  OpenFxPicture output({}, kFrame);
  EXPECT_EQ(renderPattern(effect, 150, output), kOfxStatOK);
  EXPECT_EQ(output.bytes(), expected);
}

#if defined(__GLIBC__) && !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
TEST(OpenFxHosts, HaveTheirMemoryBackAfterTheyPurgeCaches) {
  const auto bytesInUse = [] {
    const struct mallinfo2 info = mallinfo2();
    return info.uordblks + info.hblkhd;
  };
  constexpr OfxRectI kLarge{0, 0, 1024, 1024};
  StrictHost host;
  OpenFxEffect effect(host, thePlugin(), kOfxContextFilter);
  effect.set("colorSchema", {1});  // stars read the clip
  const OpenFxPicture source({.depth = kOfxBitDepthFloat}, kLarge);
  OpenFxPicture output({.depth = kOfxBitDepthFloat}, kLarge);
  const std::size_t before = bytesInUse();
  ASSERT_EQ(effect.render({.time = 40, .source = &source, .isChecked = false}, output), kOfxStatOK);
  EXPECT_GT(bytesInUse(), before + (16 << 20));  // stars and input
  effect.act(kOfxActionPurgeCaches);
  EXPECT_LT(bytesInUse(), before + (1 << 20));
}
#endif

TEST(OpenFxHosts, MayShowFramesOfSeveralSizesInTurn) {
  StrictHost host;
  OpenFxEffect effect(host, thePlugin(), kOfxContextFilter);
  makeBusy(effect);
  const OfxRectI half{0, 0, kFrame.x2 / 2, kFrame.y2 / 2};
  const OpenFxPicture source = pattern({}), reduced = pattern({}, half);
  OpenFxPicture output({}, kFrame), proxy({}, half);
  int calls = 0;
  for (int frame = 0; frame < 200; ++frame) {
    const int before = host.calls();
    const auto time = static_cast<double>(frame);
    ASSERT_EQ(effect.render({.time = time, .source = &source}, output), kOfxStatOK);
    ASSERT_EQ(effect.render({.time = time, .source = &reduced, .scale = 0.5}, proxy), kOfxStatOK);
    calls = host.calls() - before;
  }
  EXPECT_LT(calls, 2 * 20 * static_cast<int>(effect.parameters().params.size()))
      << "each frame is stepped from the first on";
  EXPECT_EQ(output.bytes(), freshFrame(199));
  // The same where the host says how large the full picture is, in place of its own size.
  OpenFxPicture other({}, half);
  const OfxRectI full{0, 0, kFrame.x2, kFrame.y2};
  ASSERT_EQ(effect.render({.time = 199, .source = &reduced, .frame = full, .scale = 0.5}, other),
            kOfxStatOK);
  EXPECT_EQ(other.bytes(), proxy.bytes());
}

TEST(OpenFxHosts, GetTheStatusThatTheInterfaceNames) {
  StrictHost host;
  OfxPlugin& plugin = thePlugin();
  OpenFxEffect effect(host, plugin, kOfxContextFilter);
  const auto reply = [&](const char* action, void* handle) {
    return plugin.mainEntry(action, handle, nullptr, nullptr);
  };
  EXPECT_EQ(reply("OfxActionThatNobodyKnows", &effect.instance()), kOfxStatReplyDefault);
  EXPECT_EQ(reply(kOfxActionEndSequenceRender, &effect.instance()), kOfxStatReplyDefault);
  int nobody = 0;
  for (const char* action : {kOfxActionRender, kOfxActionInstanceChanged, kOfxActionPurgeCaches,
                             kOfxActionGetClipPreferences, kOfxActionDestroyInstance}) {
    EXPECT_EQ(reply(action, nullptr), kOfxStatErrBadHandle) << action;
    EXPECT_EQ(reply(action, &nobody), kOfxStatErrBadHandle) << action;
  }
  EXPECT_EQ(hostkit::OpenFxBinary(PLUGIN_PATH).count(), 1);
  EXPECT_EQ(hostkit::OpenFxBinary(PLUGIN_PATH).plugin(1), nullptr);
  EXPECT_EQ(hostkit::OpenFxBinary(PLUGIN_PATH).plugin(-1), nullptr);

  OpenFxHost forgetful;  // which describes what it has described
  OpenFxEffect again(forgetful, plugin, kOfxContextFilter);
  OfxPropertySetStruct context(forgetful, "context");
  context.has(kOfxEffectContext, {std::string(kOfxContextFilter)});
  again.instance().params.mayDefine = true;
  EXPECT_EQ(again.act(kOfxActionDescribeInContext, &context), kOfxStatOK);

  OpenFxHost poor;
  poor.manners.lacksParameters = true;
  plugin.setHost(poor.record());
  EXPECT_EQ(reply(kOfxActionLoad, nullptr), kOfxStatErrMissingHostFeature);
  plugin.setHost(nullptr);
  EXPECT_EQ(reply(kOfxActionLoad, nullptr), kOfxStatErrMissingHostFeature);
  OpenFxPicture output({}, kFrame);  // in the host that has all
  EXPECT_EQ(renderPattern(effect, 3, output), kOfxStatOK);
  plugin.setHost(host.record());
  EXPECT_EQ(reply(kOfxActionLoad, nullptr), kOfxStatOK);
}

TEST(OpenFxHosts, GetNothingFromImagesThatCannotBe) {
  struct Unusable {
    hostkit::PictureKind kind;
    OfxRectI bounds;
    const char* reason;
  };
  StrictHost host;
  OpenFxEffect effect(host, thePlugin(), kOfxContextFilter);
  const OpenFxPicture sound = pattern({});
  const auto expectFailure = [&](const OpenFxPicture& source, OpenFxPicture& output,
                                 const std::string& reason) {
    const std::vector<std::uint8_t> untouched = output.bytes();
    EXPECT_EQ(effect.render({.time = 3, .source = &source}, output), kOfxStatFailed) << reason;
    EXPECT_EQ(output.bytes(), untouched) << reason;
    EXPECT_NE(effect.instance().message.find(reason), std::string::npos)
        << effect.instance().message;
    OpenFxPicture usual({}, kFrame);
    EXPECT_EQ(effect.render({.time = 3, .source = &sound}, usual), kOfxStatOK);
    EXPECT_EQ(effect.instance().message, "");
  };
  for (const auto& [kind, bounds, reason] :
       {Unusable{{.depth = "OfxBitDepthHalf"}, kFrame, "OfxBitDepthHalf"},
        {{.components = "OfxImageComponentAlpha"}, kFrame, "OfxImageComponentAlpha"},
        {{}, {0, 0, 32768, 1}, "32767"},
        {{.toldRowBytes = 4 * kFrame.x2 - 1}, kFrame, "rows"},
        {{.depth = kOfxBitDepthFloat, .toldRowBytes = 16 * kFrame.x2 + 2}, kFrame, "addresses"}}) {
    OpenFxPicture picture(kind, bounds), output({}, kFrame);
    expectFailure(sound, picture, reason);
    expectFailure(picture, output, reason);
  }
  OpenFxPicture empty({}, {5, 5, 5, 9}), output({}, kFrame);
  expectFailure(sound, empty, "no pixels");
  expectFailure(pattern({.depth = kOfxBitDepthShort}), output, "depth");
  EXPECT_EQ(renderFrame(effect, 3, empty, output), kOfxStatOK) << "a clip may cover nothing";
}

TEST(OpenFxHosts, MayStopAFrame) {
  StrictHost host;
  OpenFxEffect effect(host, thePlugin(), kOfxContextFilter);
  makeBusy(effect);
  OpenFxPicture output({}, kFrame);
  const std::vector<std::uint8_t> untouched = output.bytes();
  effect.instance().abortAfter = 1;
  EXPECT_EQ(renderPattern(effect, 200, output), kOfxStatOK);
  EXPECT_EQ(output.bytes(), untouched);
  effect.instance().abortAfter = -1;
  ASSERT_EQ(renderPattern(effect, 200, output), kOfxStatOK);
  EXPECT_EQ(output.bytes(), freshFrame(200));
}

TEST(OpenFxActions, TellThatEveryFrameIsAnotherAndWhichAlphaIsWritten) {
  StrictHost host;
  OpenFxEffect effect(host, thePlugin(), kOfxContextGeneral);
  const auto preferences = [&] {
    OfxPropertySetStruct out(host, "preferences");
    out.has(kOfxEffectFrameVarying, {0});
    out.has(kOfxEffectPreMultiplication, {std::string(kOfxImageOpaque)});
    EXPECT_EQ(effect.act(kOfxActionGetClipPreferences, nullptr, &out), kOfxStatOK);
    EXPECT_EQ(out.get<int>(kOfxEffectFrameVarying), 1);
    return out.get<std::string>(kOfxEffectPreMultiplication);
  };
  for (const char* alpha : {kOfxImagePreMultiplied, kOfxImageUnPreMultiplied}) {
    effect.connectSource(true, alpha);
    EXPECT_EQ(preferences(), alpha);
  }
  effect.connectSource(true, kOfxImageOpaque);
  EXPECT_EQ(preferences(), kOfxImageUnPreMultiplied);
  effect.connectSource(false);
  EXPECT_EQ(preferences(), kOfxImagePreMultiplied);
}

TEST(OpenFxActions, NameTheWholeClipAsTheirRegion) {
  StrictHost host;
  OpenFxEffect effect(host, thePlugin(), kOfxContextGeneral);
  OfxPropertySetStruct in(host, "region");
  in.has(kOfxPropTime, {3.0});
  const auto regionOf = [&](const char* action, const char* property) {
    OfxPropertySetStruct out(host, "regions");
    out.has(property, {0.0, 0.0, 0.0, 0.0});
    if (effect.act(action, &in, &out) != kOfxStatOK) return std::vector<double>{};
    std::vector<double> sides;
    for (std::size_t i = 0; i < 4; ++i) sides.push_back(out.get<double>(property, i));
    return sides;
  };
  const auto both = [&](const std::vector<double>& expected) {
    EXPECT_EQ(regionOf(kOfxActionGetRegionOfDefinition, kOfxEffectRegionOfDefinition), expected);
    EXPECT_EQ(regionOf(kOfxActionGetRegionsOfInterest, kOfxClipRegionOfInterestSource), expected);
  };
  OfxRectD& region = effect.instance().find(kOfxSourceClip)->region;
  region = {-5, 10, 700, 400};
  both({-5, 10, 700, 400});
  region = {kOfxFlagInfiniteMin, kOfxFlagInfiniteMin, kOfxFlagInfiniteMax, kOfxFlagInfiniteMax};
  both({0, 0, 1920, 1080});
  for (const OfxRectD& none : {OfxRectD{700, 10, -5, 400}, {-5, 10, 700, 10}, {0, 0, kNone, 9}}) {
    region = none;
    both({});
  }
  effect.connectSource(false);
  both({});
}

TEST(OpenFxActions, SetWhatAPresetSetsAndGrayWhatHasNoEffect) {
  StrictHost host;
  OpenFxEffect effect(host, thePlugin(), kOfxContextFilter);
  const auto isEnabled = [&](const char* name) {
    return effect.parameter(name).properties.get<int>(kOfxParamEnabled) != 0;
  };
  EXPECT_TRUE(isEnabled("controlEnd"));  // of a Bezier
  EXPECT_FALSE(isEnabled("volumeOfHalo"));
  effect.set("typeOfHalo", {1});
  effect.set("standardPath", {0});
  EXPECT_EQ(effect.change("typeOfHalo"), kOfxStatOK);
  EXPECT_TRUE(isEnabled("volumeOfHalo"));
  EXPECT_FALSE(isEnabled("controlEnd"));

  // "ring-of-fire", whose file says what it sets.
  const auto& items =
      effect.parameter("emmiterPresets").properties.properties.at(kOfxParamChoiceOption);
  ASSERT_EQ(std::get<std::string>(items.values.at(5)), "ring-of-fire");
  effect.set("emmiterPresets", {5});
  effect.change("emmiterPresets", kOfxChangeTime);
  EXPECT_EQ(effect.parameter("standardPath").numbers, std::vector{0.0}) << "nobody chose it";
  effect.change("emmiterPresets");
  EXPECT_EQ(effect.parameter("standardPath").numbers, std::vector{4.0});
  EXPECT_EQ(effect.parameters().openEdits, 0);
  EXPECT_NEAR(effect.parameter("start").numbers.at(1), 1 - 0.54, 1e-4);
}

}  // namespace
