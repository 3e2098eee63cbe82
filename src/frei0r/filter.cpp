#include "frei0r/filter.h"

#include <cstdio>
#include <cstring>
#include <exception>
#include <filesystem>
#include <functional>
#include <new>
#include <string>
#include <system_error>
#include <utility>

#include "frei0r/channel_order.h"
#include "frei0r/filter_parameters.h"
#include "scene/add_light.h"
#include "scene/text/printable.h"

namespace brisel {
namespace {

constexpr std::string_view kPasses = ", so the clip passes unchanged";

std::size_t pixelCount(FrameSize size) {
  return static_cast<std::size_t>(size.width) * static_cast<std::size_t>(size.height);
}

}  // namespace

void Filter::set(std::size_t parameter, FilterSettings::Setting setting) {
  const std::scoped_lock lock(mutex_);
  if (!settings_.set(parameter, std::move(setting))) return;
  const FilterParameter& changed = filterParameters()[parameter];
  if (changed.kind != FilterParameter::Kind::Text) return;
  const std::string& text = settings_.text(parameter);
  if (parameter + 1 == filterParameters().size()) {
    toldRate_ = scene::frameRateFromText(text);
    lookSource_.reset();
    if (!text.empty() && !toldRate_) {
      complain("\"" + changed.name + "\" takes a number or a fraction such as 30000/1001, not \"" +
               text + "\"");
    }
  } else if (changed.index != kInputLayer && !text.empty() &&
             !popupItem(parameterSpec(changed.index), text)) {
    complain("\"" + changed.name + "\" has no item \"" + text + "\": " + changed.explanation);
  }
}

const FilterSettings::Setting& Filter::get(std::size_t parameter) {
  const std::scoped_lock lock(mutex_);
  return settings_[parameter];
}

void Filter::update(double time, const std::uint32_t* clip, std::uint32_t* output) noexcept {
  const std::scoped_lock lock(mutex_);
  try {
    clock_.tell(time);
    findLook();
    return draw(clock_.frame(), clip, output);
  } catch (const std::bad_alloc&) {
    complain("there is no memory for a frame", kPasses);
  } catch (const std::exception& failure) {
    complain(failure.what(), kPasses);
  }
  stars_.forget();
  if (clip != output) std::memcpy(output, clip, pixelCount(size_) * sizeof *clip);
}

LookSource Filter::currentSource() const {
  LookSource source{.scene = settings_.text(kSceneParameter),
                    .presets = settings_.text(kPresetsParameter)};
  if (source.scene.empty()) return source;
  std::error_code none;
  source.saved = std::filesystem::last_write_time(source.scene, none);
  const bool isOfThisScene =
      lookSource_ && lookSource_->scene == source.scene && lookSource_->saved == source.saved;
  if (isOfThisScene && look_ && look_->rate()) {  // which counts, so that another makes no new look
    source.rate = lookSource_->rate;
  } else {
    source.rate = toldRate_ ? toldRate_ : scene::frameRateFromNumber(clock_.rate());
  }
  return source;
}

/// Throws what Look's constructor does, and the next frame tries again: a file that could not be
/// read may be a share that is back by then.
void Filter::findLook() {
  LookSource source = currentSource();
  if (lookSource_ == source) return;
  lookSource_.reset();
  look_.reset();
  look_.emplace(source, size_);
  lookSource_ = std::move(source);
  stars_.forget();
  const auto rate = toldRate_ ? toldRate_ : look_->rate();
  clock_.setRate(rate ? std::optional(rate->perSecond()) : std::nullopt);
}

void Filter::draw(std::int32_t frame, const std::uint32_t* clip, std::uint32_t* output) {
  const std::size_t pixels = pixelCount(size_);
  if (pixels == 0) return;
  clip_.resize(pixels);
  rgbaToArgb(clip, clip_.data(), pixels);
  const std::size_t layers = look_->layerCount();
  if (layers > 1) below_.resize(pixels);
  if (!painter_) painter_.emplace();
  if (!choices_.record(frame, settings_.choices(size_))) stars_.forget();

  FrameViews views;
  views.input = viewOf(clip_.data());
  views.layerWidth = look_->layerWidth();
  views.highQuality = look_->highQuality();
  views.painter = &*painter_;
  for (std::size_t layer = 0; layer < layers; ++layer) {
    if (layer > 0) views.backdrop = views.output;
    views.output = viewOf((layers - layer) % 2 == 1 ? output : below_.data());
    drawLayer(layer, frame, views);
  }
  argbToRgba(output, output, pixels);
}

void Filter::drawLayer(std::size_t layer, std::int32_t frame, const FrameViews& views) {
  const Values values = valuesAt(layer, frame);
  const bool isToBeAdded = look_->isToBeAdded(layer, values);
  FrameViews drawn = views;
  if (isToBeAdded) drawn.backdrop = {};
  stars_.draw(*look_, layer, frame, values, drawn,
              [this](std::size_t each, std::int32_t step) { return valuesAt(each, step); });
  if (isToBeAdded) scene::addLight(views.output, views.backdrop);
}

Values Filter::valuesAt(std::size_t layer, std::int32_t frame) const {
  Values values = look_->valuesAt(layer, frame);
  apply(choices_.at(frame), values);
  return values;
}

MutableImageView Filter::viewOf(std::uint32_t* pixels) const {
  return {reinterpret_cast<std::uint8_t*>(pixels), size_.width, size_.height,
          std::ptrdiff_t{4} * size_.width};
}

void Filter::complain(std::string_view reason, std::string_view consequence) noexcept {
  const std::size_t hash = std::hash<std::string_view>{}(reason);
  if (hash == lastComplaint_) return;
  lastComplaint_ = hash;
  try {
    std::fprintf(stderr, "brisel: %s%.*s\n", scene::printable(reason).c_str(),
                 static_cast<int>(consequence.size()), consequence.data());
  } catch (const std::bad_alloc&) {  // which hosts are not told of
  }
}

}  // namespace brisel
