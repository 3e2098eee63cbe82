// The OpenFX plug-in's entry points, called by the small host in any order, with any parameter,
// picture, window and time, for several instances; and by that host when it does not keep to the
// interface.
#include <algorithm>
#include <array>
#include <cfenv>
#include <cstdio>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "bytes.h"
#include "hostkit/error.h"
#include "hostkit/openfx/effect.h"
#include "openfx_wishes.h"
#include "target.h"

// NOLINTNEXTLINE(readability-identifier-naming): by which hosts find it
extern "C" OfxPlugin* OfxGetPlugin(int nth);

namespace {

using fuzz::anyNumber;
using fuzz::anyTime;
using fuzz::Bytes;
using fuzz::require;
using hostkit::OpenFxEffect;
using hostkit::OpenFxHost;

/// Calls as a host that rounds its own way, and keeps what the plug-in says to hosts that take no
/// messages from among the fuzzer's own lines.
OfxStatus callStrictly(const char* action, const void* handle, OfxPropertySetHandle in,
                       OfxPropertySetHandle out) {
  static std::FILE* const nowhere = std::fopen("/dev/null", "w");
  std::FILE* const errors = std::exchange(stderr, nowhere);
  const int rounding = std::fegetround();
  std::fesetround(FE_UPWARD);
  const OfxStatus status = OfxGetPlugin(0)->mainEntry(action, handle, in, out);
  const bool isKept = std::fegetround() == FE_UPWARD;
  std::fesetround(rounding);
  stderr = errors;
  require(isKept, "the host's rounding mode stays");
  require(status >= kOfxStatOK && status <= kOfxStatReplyDefault,
          "the status is one that the interface names");
  return status;
}

OfxPlugin& strictPlugin() {
  static OfxPlugin plugin = [] {
    OfxPlugin copy = *OfxGetPlugin(0);
    copy.mainEntry = callStrictly;
    return copy;
  }();
  return plugin;
}

/// A host and whether all that it did was what the interface says.
struct Project {
  OpenFxHost host{};
  bool isHonest = true;
  bool isFailing = false;  // calls, now

  /// Every so many calls, and the only one of the next ones; 0: none.
  void fail(int every, int only) {
    host.manners.failsEvery = every;
    host.failOnlyCall(only);
    isFailing = every != 0 || only != 0;
    isHonest = isHonest && !isFailing;
  }
};

class Instance {
 public:
  Instance(Project& project, const char* context, bool isOneObject)
      : project_(project),
        context_(context),
        isSound_(!project.isFailing),
        effect_(project.host, strictPlugin(), context, isOneObject) {
    boundAll();
  }

  void step(Bytes& bytes) {
    if (project_.isFailing) isDisturbed_ = true;
    switch (bytes.integerIn(0, 9)) {
      case 0:
        return callWithoutSense(bytes);
      case 1:
      case 2:
      case 3:
        return set(bytes);
      case 4:
        return change(bytes);
      case 5:
        return ask(bytes);
      case 6:
        effect_.act(bytes.oneOf({kOfxActionPurgeCaches, "OfxActionSyncPrivateData",
                                 "OfxImageEffectActionBeginSequenceRender",
                                 kOfxActionEndSequenceRender, "OfxActionBeginInstanceEdit"}));
        return;
      default:
        effect_.instance().abortAfter = bytes.integerIn(0, 7) == 0 ? bytes.integerIn(0, 4) : -1;
        frame_ = fuzz::anyFrame(bytes);
        draw();
    }
  }

  /// A frame follows from values and time, whatever happened before, in a host that is honest now.
  void checkAgainstFreshInstance() {
    if (!frame_) return;
    Instance fresh(project_, context_, false);
    fresh.frame_ = frame_;
    if (isSound_) fresh.takeValues(effect_);
    const auto expected = fresh.draw();
    effect_.instance().abortAfter = -1;
    if (isDisturbed_) effect_.change("size");
    const auto drawn = draw();
    require(!isSound_ || drawn == expected, "a frame does not depend on what happened before");
  }

 private:
  void boundAll() {
    for (const auto& param : effect_.parameters().params) fuzz::bound(*param);
  }

  void takeValues(OpenFxEffect& other) {
    for (const auto& param : other.parameters().params) {
      OfxParamStruct& same = effect_.parameter(param->properties.name);
      same.numbers = param->numbers;
      same.text = param->text;
      same.curve = param->curve;
    }
    const OfxImageClipStruct* source = other.instance().find(kOfxSourceClip);
    if (source == nullptr) return;
    effect_.connectSource(source->properties.get<int>(kOfxClipConnected) != 0);
  }

  void set(Bytes& bytes) {
    const auto& params = effect_.parameters().params;
    if (params.empty()) return;
    auto& param =
        *params[static_cast<std::size_t>(bytes.integerIn(0, static_cast<int>(params.size()) - 1))];
    fuzz::setAnything(param, bytes);
    param.curve = nullptr;
    const bool mayMove = param.type == kOfxParamTypeDouble || param.type == kOfxParamTypeDouble2D ||
                         param.type == kOfxParamTypeRGB;
    if (!mayMove || param.properties.name == "raysCountDispersion" || bytes.integerIn(0, 3) != 0) {
      return;
    }
    isDisturbed_ = true;  // as not every frame's change is noticed
    const double slope = anyNumber(bytes);
    const bool purges = bytes.integerIn(0, 3) == 0;
    param.curve = [this, purges, slope, numbers = param.numbers](double time) {
      if (purges && isDrawing_) effect_.act(kOfxActionPurgeCaches);
      std::vector<double> then = numbers;
      for (double& number : then) number += slope * time;
      return then;
    };
  }

  void change(Bytes& bytes) {
    const auto& params = effect_.parameters().params;
    const auto place = static_cast<std::size_t>(bytes.integerIn(0, 255));
    const std::string name =
        place < params.size()
            ? params[place]->properties.name
            : bytes.oneOf({"emmiterPresets", "starsPresets", "", "nothing", kOfxSourceClip});
    effect_.change(name, bytes.oneOf({kOfxChangeUserEdited, "OfxChangePluginEdited", kOfxChangeTime,
                                      "OfxChangeOfHeart"}));
    boundAll();
    require(effect_.parameters().openEdits == 0, "what begins as one step of undo ends");
  }

  void ask(Bytes& bytes) {
    OfxImageClipStruct* source = effect_.instance().find(kOfxSourceClip);
    if (source != nullptr) {
      source->region = {anyNumber(bytes), anyNumber(bytes), anyNumber(bytes), anyNumber(bytes)};
      if (bytes.flag()) source->region.x2 = kOfxFlagInfiniteMax;
      if (bytes.flag()) source->region.y1 = kOfxFlagInfiniteMin;
      effect_.connectSource(bytes.flag());
    }
    OfxPropertySetStruct in(project_.host, "region"), out(project_.host, "answers");
    in.has(kOfxPropTime, {anyTime(bytes)});
    out.has(kOfxEffectRegionOfDefinition, {0.0, 0.0, 0.0, 0.0});
    out.has(kOfxClipRegionOfInterestSource, {0.0, 0.0, 0.0, 0.0});
    out.has(kOfxEffectFrameVarying, {0});
    out.has(kOfxEffectPreMultiplication, {std::string(kOfxImageOpaque)});
    for (const char* action : {kOfxActionGetClipPreferences, kOfxActionGetRegionOfDefinition,
                               kOfxActionGetRegionsOfInterest}) {
      OfxPropertySetStruct* const given = bytes.integerIn(0, 7) == 0 ? nullptr : &in;
      effect_.act(action, given, bytes.integerIn(0, 7) == 0 ? nullptr : &out);
    }
  }

  void callWithoutSense(Bytes& bytes) {
    OfxImageEffectStruct* const instance = &effect_.instance();
    const char* const upon[] = {kOfxActionRender,
                                kOfxActionInstanceChanged,
                                kOfxActionPurgeCaches,
                                kOfxActionGetClipPreferences,
                                kOfxActionGetRegionOfDefinition,
                                kOfxActionGetRegionsOfInterest,
                                kOfxActionDestroyInstance};
    const auto call = [](const char* action, const void* handle) {
      return callStrictly(action, handle, nullptr, nullptr);
    };
    int nobody = 0;
    require(call(bytes.oneOf(upon), nullptr) == kOfxStatErrBadHandle &&
                call(bytes.oneOf(upon), &nobody) == kOfxStatErrBadHandle,
            "nobody has that handle");
    call(nullptr, instance);
    const auto name = bytes.take(static_cast<std::size_t>(bytes.integerIn(0, 4)));
    const std::string action(name.begin(), name.end());
    require(call(action.c_str(), instance) == kOfxStatReplyDefault, "there is no such action");
    if (bytes.flag()) call(kOfxActionUnload, instance);
    if (bytes.flag()) call(kOfxActionDescribe, instance);
    isDisturbed_ = true;
    call(kOfxActionInstanceChanged, instance);
    call(kOfxActionRender, instance);
    if (bytes.flag()) {
      require(call(kOfxActionDestroyInstance, instance) == kOfxStatOK, "there is an instance");
      require(call(bytes.oneOf(upon), instance) == kOfxStatErrBadHandle, "there is no more");
    }
    isSound_ = isSound_ && !project_.isFailing;
    require(call(kOfxActionCreateInstance, instance) == kOfxStatOK, "there is one again");
    if (bytes.integerIn(0, 3) != 0) return;
    project_.isHonest = false;  // to describe what is described, and not as any context
    isSound_ = false;
    call(kOfxActionDescribeInContext, instance);
  }

  std::pair<OfxStatus, std::vector<std::uint8_t>> draw() {
    hostkit::OpenFxPicture output = frame_->output;
    frame_->request.source = frame_->source ? &*frame_->source : nullptr;
    isDrawing_ = true;
    const OfxStatus status = effect_.render(frame_->request, output);
    isDrawing_ = false;
    require(status != kOfxStatReplyDefault, "a frame has no default");
    return {status, output.bytes()};
  }

  Project& project_;
  const char* context_;
  bool isSound_;              // created with all that it asked the host for
  bool isDisturbed_ = false;  // by what it cannot notice
  bool isDrawing_ = false;
  OpenFxEffect effect_;
  std::optional<fuzz::WantedFrame> frame_;  // that was drawn last
};

void setManners(Project& project, Bytes& bytes) {
  hostkit::HostManners& manners = project.host.manners;
  manners.ignoresTime = bytes.flag();
  manners.failsTime = bytes.flag();
  manners.failsValues = bytes.flag();
  manners.now = anyTime(bytes);
}

/// A host that fails calls makes faults itself, such as gaps in lists, and may not even tell the
/// window. Others of these are the plug-in's.
void checkComplaints(const Project& project) {
  constexpr const char* kNever[] = {"bytes", "input is written", "given back", "replies"};
  for (const std::string& fault : project.host.complaints()) {
    const bool isAnyOfThese = std::ranges::any_of(
        kNever, [&](const char* words) { return fault.find(words) != std::string::npos; });
    require(!project.isHonest && !isAnyOfThese, fault.c_str());
  }
}

}  // namespace

void fuzz::runInput(std::span<const std::uint8_t> input) {
  constexpr int kMostSteps = 12;
  Bytes bytes(input);
  Project project;
  hostkit::HostManners& manners = project.host.manners;
  manners.lacksMessages = bytes.flag();
  manners.refusedParameter =
      bytes.oneOf({"", "", "", "controlPoints", "emmiter", "size", "start", "scene", "startFrame"});
  manners.lackedProperty =
      bytes.oneOf({"", "", "", kOfxPropTime, kOfxEffectContext, kOfxEffectRenderScale,
                   kOfxClipConnected, kOfxEffectPreMultiplication, kOfxImageRegionOfDefinition,
                   kOfxImageRowBytes, kOfxImageData, kOfxImageBounds, kOfxEffectFrameRate,
                   kOfxEffectProjectSize, kOfxPropChangeReason, kOfxImageField});
  std::array<std::unique_ptr<Instance>, 2> instances;
  const auto create = [&](std::unique_ptr<Instance>& instance, const char* context, bool isOne) {
    try {
      instance = std::make_unique<Instance>(project, context, isOne);
    } catch (const hostkit::Error&) {
      require(!project.isHonest, "an honest host gets an instance");
    }
  };
  for (int step = 0; step < kMostSteps && !bytes.empty(); ++step) {
    auto& instance = instances[bytes.flag() ? 1 : 0];
    if (!instance) {
      const char* const context =
          bytes.oneOf({kOfxContextFilter, kOfxContextGeneral, kOfxContextGenerator});
      create(instance, context, bytes.flag());
    }
    if (!instance) continue;
    if (bytes.integerIn(0, 7) == 0) setManners(project, bytes);
    const int failing = bytes.integerIn(0, 31);  // from this step on, mostly as before
    if (failing == 0) project.fail(bytes.integer<std::uint8_t>(), 0);
    if (failing == 1) project.fail(0, bytes.integerIn(1, 600));
    if (failing == 2 || failing == 3) project.fail(0, 0);
    instance->step(bytes);
    if (bytes.integerIn(0, 31) == 0) instance.reset();
  }
  project.fail(0, 0);
  const auto& last = instances[instances[0] == nullptr ? 1 : 0];
  if (last) last->checkAgainstFreshInstance();
  instances = {};
  checkComplaints(project);
}
