#include "openfx/effect_instance.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <functional>
#include <new>
#include <system_error>
#include <utility>

#include "effect/settings.h"
#include "effect/star_history.h"
#include "scene/text/printable.h"

namespace brisel::openfx {
namespace {

using Kind = EffectParameter::Kind;

OfxImageClipHandle clipOf(const Host& host, OfxImageEffectHandle instance, const char* name) {
  OfxImageClipHandle clip = nullptr;
  const OfxStatus status = host.effect->clipGetHandle(instance, name, &clip, nullptr);
  return status == kOfxStatOK ? clip : nullptr;
}

/// Of the reduced frame that a host shows while a project is worked on.
std::int32_t fullLength(std::int32_t length, double scale) {
  constexpr double kMost = 32767;
  const bool isScale = scale > 0 && scale < 1;  // not-a-number is none
  return isScale ? static_cast<std::int32_t>(std::min(std::round(length / scale), kMost)) : length;
}

FloatMix mixOf(const Values& values, bool isToBeAdded) {
  if (isToBeAdded) return FloatMix::Light;
  const double item = values.number(kMixWithOriginal);
  if (item == static_cast<double>(MixMode::Normal)) return FloatMix::Normal;
  return item == static_cast<double>(MixMode::Add) ? FloatMix::Add : FloatMix::Replace;
}

}  // namespace

EffectInstance::EffectInstance(const Host& host, OfxImageEffectHandle handle)
    : host_(host), handle_(handle), values_(host_, handle), enabled_(kParamCount, -1) {
  const Properties instance = propertiesOf(host, handle);
  if (instance.text(kOfxEffectContext) != kOfxContextGenerator) {
    source_ = clipOf(host, handle, kOfxSourceClip);
  }
  instance.set(kOfxEffectSequentialRender, 2);  // in order is quicker, any order is right
  instance.set(kOfxEffectSupportsTiles, 0);
  updateGraying();
}

bool EffectInstance::hasSource() const {
  return source_ != nullptr && propertiesOf(host_, source_).integer(kOfxClipConnected, 1) != 0;
}

/// Whoever has it may touch what frames are made of. Not a lock, as the host may ask within a frame
/// for what is to be done after it.
class EffectInstance::Turn {
 public:
  explicit Turn(std::binary_semaphore& turn) : turn_(turn) { turn_.acquire(); }
  Turn(const Turn&) = delete;
  Turn& operator=(const Turn&) = delete;
  ~Turn() { turn_.release(); }

 private:
  std::binary_semaphore& turn_;
};

OfxStatus EffectInstance::render(const Properties& arguments) {
  OfxStatus status = kOfxStatOK;
  try {
    const Turn turn(turn_);
    status = renderInTurn(arguments);
  } catch (...) {
    purgeInTurn();
    throw;
  }
  purgeInTurn();
  return status;
}

void EffectInstance::purge() {
  isToBePurged_ = true;
  purgeInTurn();
}

/// If it is to be done, and nobody renders; who does comes here afterwards.
void EffectInstance::purgeInTurn() {
  while (isToBePurged_ && turn_.try_acquire()) {
    if (isToBePurged_.exchange(false)) {
      scales_.clear();
      buffers_ = {};
      painter_.reset();
    }
    turn_.release();
  }
}

OfxStatus EffectInstance::renderInTurn(const Properties& arguments) {
  const OfxTime time = arguments.number(kOfxPropTime, 0);
  const RenderScale scale{arguments.number(kOfxEffectRenderScale, 1),
                          arguments.number(kOfxEffectRenderScale, 1, 1)};
  if (output_ == nullptr) output_ = clipOf(host_, handle_, kOfxOutputClip);
  const HostImage output(host_, output_, time, scale);
  if (!output.pixels()) {
    if (host_.effect->abort(handle_) != 0) return kOfxStatOK;
    return fail("The output " + (output.fault().empty() ? "has no pixels" : output.fault()));
  }
  FrameTask task{output.frame(), output.pixels()->bounds, *output.pixels(), {}};
  if (const auto window = arguments.rectangle(kOfxEffectRenderWindow)) {
    task.window = overlap(*window, task.output.bounds);
  }
  const std::string field = arguments.text(kOfxEffectFieldToRender);
  if (!output.isField() && (field == kOfxImageFieldLower || field == kOfxImageFieldUpper)) {
    task.rowStep = 2;
    task.firstRow = field == kOfxImageFieldUpper ? 1 : 0;
  }

  const HostImage source(host_, hasSource() ? source_ : nullptr, time, scale);
  if (!source.fault().empty()) return fail("The clip " + source.fault());
  if (source.pixels()) task.source = *source.pixels();
  if (task.source.data != nullptr && task.source.layout.depth != task.output.layout.depth) {
    return fail("The clip has another depth than the output: convert it to that");
  }
  Composer composer(task, buffers_);
  try {
    findScale(scale, composer.size());
    const std::int32_t frame = frameAt(time);
    if (frame < 0) {
      composer.pass();
    } else {
      noticeChanges(frame);
      draw(composer, frame);
    }
  } catch (const Aborted&) {
    return kOfxStatOK;
  } catch (const std::bad_alloc&) {
    forgetStars();
    throw;
  } catch (const std::exception& failure) {
    composer.pass();
    return fail(failure.what());
  }
  complain("");
  return kOfxStatOK;
}

/// Throws what Look's constructor does.
void EffectInstance::findScale(RenderScale renderScale, FrameSize frame) {
  constexpr std::size_t kMostScales = 3;  // of which each keeps states of stars
  LookSource source;
  const std::string scene = values_.text(Kind::Scene);
  source.scene = std::u8string(scene.begin(), scene.end());
  source.rate =
      scene::frameRateFromNumber(propertiesOf(host_, handle_).number(kOfxEffectFrameRate, 0));
  source.mask = values_.text(Kind::Mask);
  source.hasClip = hasSource();
  if (!source.scene.empty()) {
    std::error_code none;
    source.saved = std::filesystem::last_write_time(source.scene, none);
  }
  const std::int32_t startFrame = values_.startFrame();
  if (lookSource_ != source || startFrame_ != startFrame) scales_.clear();
  lookSource_ = source;
  startFrame_ = startFrame;

  const FrameSize full{fullLength(frame.width, renderScale.x),
                       fullLength(frame.height, renderScale.y)};
  const auto known = std::ranges::find_if(
      scales_, [&](const Scale& scale) { return scale.frame == frame && scale.full == full; });
  if (known != scales_.end()) return scales_.splice(scales_.begin(), scales_, known);
  scales_.push_front({frame, full, Look(source, frame, full)});
  if (scales_.size() > kMostScales) scales_.pop_back();
}

/// The frame at a time of the host's, which may be that of a field; below 0: there are no stars.
std::int32_t EffectInstance::frameAt(OfxTime time) const {
  constexpr double kLastFrame = 1e9;
  constexpr double kAlmost = 1e-6;  // of a frame
  const double frame = std::floor(time - startFrame_ + kAlmost);
  if (!(frame >= 0)) return -1;
  return static_cast<std::int32_t>(std::min(frame, kLastFrame));
}

void EffectInstance::forgetStars() {
  for (Scale& scale : scales_) {
    scale.stars.forget();
    scale.record.clear();
  }
}

/// Where the host did not say that values changed, this frame and some before it, ever farther
/// apart, tell.
void EffectInstance::noticeChanges(std::int32_t frame) {
  if (isStale_.exchange(false)) return forgetStars();
  const auto isSame = [this](std::int32_t known) {
    const ValueRecord& record = scale().record;
    return !record.knows(known) ||
           record.agrees(known,
                         values_.at(static_cast<OfxTime>(startFrame_) + known, scale().frame));
  };
  bool isKept = isSame(frame) && isSame(StarHistory::beginOf(frame));
  for (std::int64_t back = 1; isKept && back < frame; back *= 2) {
    isKept = isSame(static_cast<std::int32_t>(frame - back));
  }
  if (!isKept) forgetStars();
}

void EffectInstance::stopIfAborted() const {
  if (host_.effect->abort(handle_) != 0) throw Aborted();
}

Values EffectInstance::valuesAt(std::size_t layer, std::int32_t frame) {
  constexpr std::int32_t kFramesBetweenQuestions = 64;
  if (frame % kFramesBetweenQuestions == 0) stopIfAborted();
  const Choices choices = values_.at(static_cast<OfxTime>(startFrame_) + frame, scale().frame);
  scale().record.note(frame, choices);
  Values values = scale().look.valuesAt(layer, frame);
  brisel::apply(choices, values);
  return values;
}

void EffectInstance::draw(Composer& composer, std::int32_t frame) {
  if (!painter_) painter_.emplace();
  const std::size_t layers = scale().look.layerCount();
  if (layers > 1) {
    composer.begin();
  } else {
    composer.beginAlone();
  }
  for (std::size_t layer = 0; layer < layers; ++layer) drawLayer(composer, layer, frame);
  if (layers > 1) composer.end();
}

/// The stars are drawn over nothing and mixed afterwards, as floats are beyond the effect.
void EffectInstance::drawLayer(Composer& composer, std::size_t layer, std::int32_t frame) {
  stopIfAborted();
  const Look& look = scale().look;
  FrameViews views;
  const auto valuesOfStep = [&](std::size_t each, std::int32_t step) {
    const Values values = valuesAt(each, step);
    if (starsReadInput(values)) composer.fillInput();
    views.input = composer.input();
    return values;
  };
  Values values = valuesOfStep(layer, frame);
  const FloatMix mix = mixOf(values, look.isToBeAdded(layer, values));
  values.setNumber(kMixWithOriginal, static_cast<double>(MixMode::Replace));
  views.output = composer.stars();
  views.layerWidth = look.layerWidth();
  views.highQuality = look.highQuality();
  views.painter = &*painter_;
  const bool isOnly = look.layerCount() == 1;
  const std::function<void(std::int32_t, std::int32_t)> put =
      [&](std::int32_t begin, std::int32_t end) { composer.put(mix, begin, end); };
  if (isOnly) views.whenRowsAreDone = &put;
  scale().stars.draw(look, layer, frame, values, views, valuesOfStep);
  if (!isOnly) composer.add(mix);
}

/// An empty reason takes the last one back.
void EffectInstance::complain(const std::string& reason) {
  if (reason == complaint_) return;
  complaint_ = reason;
  const std::string text = scene::printable(reason);
  if (host_.message == nullptr) {
    if (!reason.empty()) std::fprintf(stderr, "brisel: %s\n", text.c_str());
  } else if (reason.empty()) {
    host_.message->clearPersistentMessage(handle_);
  } else {
    host_.message->setPersistentMessage(handle_, kOfxMessageError, nullptr, "%s", text.c_str());
  }
}

OfxStatus EffectInstance::fail(const std::string& reason) {
  complain(reason);
  return kOfxStatFailed;
}

}  // namespace brisel::openfx
