#include "openfx/effect_instance.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <new>
#include <system_error>
#include <utility>

#include "effect/settings.h"
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
    : host_(host), handle_(handle), values_(host, handle), enabled_(kParamCount, -1) {
  output_ = clipOf(host, handle, kOfxOutputClip);
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

OfxStatus EffectInstance::render(const Properties& arguments) {
  const std::scoped_lock lock(mutex_);
  const OfxTime time = arguments.number(kOfxPropTime, 0);
  const HostImage output(host_, output_, time);
  if (!output.pixels()) return host_.effect->abort(handle_) != 0 ? kOfxStatOK : kOfxStatFailed;
  FrameTask task{output.frame(), output.pixels()->bounds, *output.pixels(), {}};
  if (const auto window = arguments.rectangle(kOfxEffectRenderWindow)) {
    task.window = overlap(*window, task.output.bounds);
  }
  const std::string field = arguments.text(kOfxEffectFieldToRender);
  if (!output.isField() && (field == kOfxImageFieldLower || field == kOfxImageFieldUpper)) {
    task.rowStep = 2;
    task.firstRow = field == kOfxImageFieldUpper ? 1 : 0;
  }

  const HostImage source(host_, hasSource() ? source_ : nullptr, time);
  if (source.pixels()) task.source = *source.pixels();
  if (task.source.data != nullptr && task.source.layout.depth != task.output.layout.depth) {
    return kOfxStatFailed;
  }
  Composer composer(task, buffers_);
  try {
    findLook(arguments, composer.size());
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
    complain(failure.what());
    return kOfxStatFailed;
  }
  complain("");
  return kOfxStatOK;
}

/// Throws what Look's constructor does.
void EffectInstance::findLook(const Properties& arguments, FrameSize frame) {
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
  const FrameSize full{fullLength(frame.width, arguments.number(kOfxEffectRenderScale, 1)),
                       fullLength(frame.height, arguments.number(kOfxEffectRenderScale, 1, 1))};
  const std::int32_t startFrame = values_.startFrame();
  if (look_ && lookSource_ == source && frame_ == frame && full_ == full &&
      startFrame_ == startFrame) {
    return;
  }
  look_.reset();
  forgetStars();
  look_.emplace(source, frame, full);
  lookSource_ = std::move(source);
  frame_ = frame;
  full_ = full;
  startFrame_ = startFrame;
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
  stars_.forget();
  record_.clear();
}

/// Where the host did not say that values changed, this frame and some before it, ever farther
/// apart, tell.
void EffectInstance::noticeChanges(std::int32_t frame) {
  if (isStale_.exchange(false)) return forgetStars();
  const auto isSame = [this](std::int32_t known) {
    return !record_.knows(known) ||
           record_.agrees(known, values_.at(static_cast<OfxTime>(startFrame_) + known, frame_));
  };
  bool isKept = isSame(frame) && isSame(0);
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
  const Choices choices = values_.at(static_cast<OfxTime>(startFrame_) + frame, frame_);
  record_.note(frame, choices);
  Values values = look_->valuesAt(layer, frame);
  brisel::apply(choices, values);
  return values;
}

void EffectInstance::draw(Composer& composer, std::int32_t frame) {
  if (!painter_) painter_.emplace();
  const std::size_t layers = look_->layerCount();
  if (layers > 1) composer.begin();
  for (std::size_t layer = 0; layer < layers; ++layer) drawLayer(composer, layer, frame);
  if (layers > 1) composer.end();
}

/// The stars are drawn over nothing and mixed afterwards, as floats are beyond the effect.
void EffectInstance::drawLayer(Composer& composer, std::size_t layer, std::int32_t frame) {
  stopIfAborted();
  const auto valuesOfStep = [&](std::size_t each, std::int32_t step) {
    const Values values = valuesAt(each, step);
    if (starsReadInput(values)) composer.fillInput();
    return values;
  };
  Values values = valuesOfStep(layer, frame);
  const FloatMix mix = mixOf(values, look_->isToBeAdded(layer, values));
  values.setNumber(kMixWithOriginal, static_cast<double>(MixMode::Replace));
  FrameViews views;
  views.output = composer.stars();
  views.input = composer.input();
  views.layerWidth = look_->layerWidth();
  views.highQuality = look_->highQuality();
  views.painter = &*painter_;
  stars_.draw(*look_, layer, frame, values, views, valuesOfStep);
  if (look_->layerCount() > 1) {
    composer.add(mix);
  } else {
    composer.put(mix);
  }
}

/// An empty reason takes the last one back.
void EffectInstance::complain(const std::string& reason) {
  if (reason == complaint_) return;
  complaint_ = reason;
  if (host_.message == nullptr) {
    if (!reason.empty()) std::fprintf(stderr, "brisel: %s\n", scene::printable(reason).c_str());
  } else if (reason.empty()) {
    host_.message->clearPersistentMessage(handle_);
  } else {
    host_.message->setPersistentMessage(handle_, kOfxMessageError, nullptr, "%s", reason.c_str());
  }
}

}  // namespace brisel::openfx
